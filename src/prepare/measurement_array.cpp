#include "prepare/measurement_array.h"

#include <cstdint>
#include <string>
#include <vector>

#include "prepare/signal_text.h"

namespace quillmark::preparing {

namespace {

constexpr std::size_t kMostSizes = 3;

/// The array of a measurement, and where its sizes are told.
struct MeasuredArray {
    const FoundPart* dim = nullptr;
    Array array;
};

bool hasTooMany(const BlockWalk& walk, const FoundPart& dim) {
    return wordsOf(walk.textOf(dim)).size() - 1 > kMostSizes;
}

MeasuredArray readArray(const BlockWalk& walk) {
    MeasuredArray measured;
    for (const FoundPart& found : walk.parts()) {
        if (found.rule->keyword == "MATRIX_DIM") {
            measured.dim = &found;
        } else if (found.rule->keyword == "LAYOUT") {
            measured.array.isRowWise = valueOf(walk.textOf(found)) == "ROW_DIR";
        }
    }
    if (measured.dim != nullptr) {
        measured.array.sizes = readSizes(walk.textOf(*measured.dim));
    }
    return measured;
}

/// Of several MATRIX_DIM the last one counts. Whether the others had to go.
bool takeOutEarlierSizes(BlockWalk& walk, const Part& part, const FoundPart* last,
                         PartWriter& writer, Report& report) {
    bool isAny = false;
    for (const FoundPart& found : walk.parts()) {
        if (found.rule->keyword == "MATRIX_DIM" && &found != last && hasTooMany(walk, found)) {
            isAny = true;
            report.change(writer.placeIn(part, found.begin),
                          "took out " + std::string(walk.textOf(found)));
            walk.edits().takeOut(walk.text(), found.begin, found.end);
        }
    }
    return isAny;
}

std::string dimensionText(const Array& array) {
    std::string text = "MATRIX_DIM";
    for (const std::int64_t size : array.sizes) {
        text += " " + std::to_string(size);
    }
    return array.sizes.empty() ? text + " 1" : text;
}

/// The measurement as that of one value, which lies so many bytes behind the first.
std::string elementText(BlockWalk& walk, const std::vector<std::int64_t>& indices,
                        std::int64_t offset) {
    TextEdits edits = walk.edits();
    std::string suffix;
    for (const std::int64_t index : indices) {
        suffix += "[" + std::to_string(index) + "]";
    }
    const std::size_t nameEnd = walk.parameterEnd(0);
    edits.replace(nameEnd, nameEnd, suffix);
    for (const FoundPart& found : walk.parts()) {
        const std::string_view keyword = found.rule->keyword;
        const std::string_view text = walk.textOf(found);
        if (keyword == "MATRIX_DIM" || keyword == "LAYOUT" || keyword == "ARRAY_SIZE") {
            edits.takeOut(walk.text(), found.begin, found.end);
        } else if (keyword == "ECU_ADDRESS") {
            edits.replace(
                found.begin, found.end,
                "ECU_ADDRESS " + addressText(integerOf(valueOf(text)).value_or(0), offset));
        } else if (keyword == "DISPLAY_IDENTIFIER") {
            edits.replace(found.begin, found.end, withSuffix(text, suffix));
        } else if (keyword == "SYMBOL_LINK") {
            edits.replace(found.begin, found.end, movedSymbol(text, offset));
        } else if (keyword == "IF_DATA") {
            edits.replace(found.begin, found.end,
                          movedInterface(walk.editedText(found), {}, offset));
        }
    }
    return edits.apply(walk.text());
}

/// Writes the values one by one.
void writeElements(BlockWalk& walk, const Part& part, const Array& array, PartWriter& writer) {
    const std::string between = writer.indentation(part);
    const ValueType* type = findValueType(walk.parameter(2));
    writer.copy(0, part.begin);
    const Place place = writer.placeIn(part, 0);
    std::vector<std::int64_t> indices(array.sizes.size());
    const auto count = static_cast<std::int64_t>(array.count());
    for (std::int64_t element = 0; element < count; ++element) {
        std::int64_t rest = element;
        for (std::size_t i = 0; i < indices.size(); ++i) {
            indices[i] = rest % array.sizes[i];
            rest /= array.sizes[i];
        }
        writer.make(element == 0 ? "" : between, place);
        writer.make(elementText(walk, indices, element * type->size), place);
    }
    writer.discard(part);
}

}  // namespace

Sizes mendSizes(BlockWalk& walk, const Part& part, const ExpansionOptions& options,
                PartWriter& writer, Report& report) {
    const auto [dim, array] = readArray(walk);
    const bool isMended = takeOutEarlierSizes(walk, part, dim, writer, report);
    if (dim == nullptr || !hasTooMany(walk, *dim)) {
        return isMended ? Sizes::Mended : Sizes::Kept;
    }
    const Place place = writer.placeIn(part, dim->begin);
    const std::string name(walk.parameter(0));
    if (array.sizes.size() <= kMostSizes) {
        const std::string text = dimensionText(array);
        report.change(place, "the sizes of " + name + " are now those of " + text);
        walk.edits().replace(dim->begin, dim->end, text);
        return Sizes::Mended;
    }
    if (!array.isRowWiseOr(false)) {
        report.loss(place,
                    name + " is lost: an array of more than three sizes without LAYOUT ROW_DIR");
        writer.takeOut(part);
        return Sizes::Written;
    }
    if (array.count() > options.limit) {
        report.error(place, name + " becomes " + std::to_string(array.count()) + " signals");
        return Sizes::Refused;
    }
    report.change(place, name + " became " + std::to_string(array.count()) + " signals");
    writeElements(walk, part, array, writer);
    return Sizes::Written;
}

}  // namespace quillmark::preparing
