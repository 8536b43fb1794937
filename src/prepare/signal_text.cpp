#include "prepare/signal_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>

namespace quillmark::preparing {

namespace {

using Kind = Type::Kind;

constexpr std::string_view kThis = "THIS.";

/// Where a part of a type or an instance may stand in version 1.6.
struct PlaceRow {
    std::string_view keyword;
    bool inMeasurement;
    bool inCharacteristic;
    bool inAxis;
};

constexpr PlaceRow kInstancePlaces[] = {
    {"ECU_ADDRESS_EXTENSION", true, true, true},
    {"READ_WRITE", true, false, false},
    {"CALIBRATION_ACCESS", false, true, true},
    {"MAX_REFRESH", true, true, false},
    {"DISPLAY_IDENTIFIER", true, true, true},
    {"SYMBOL_LINK", true, true, true},
    {"ANNOTATION", true, true, true},
    {"IF_DATA", true, true, true},
};

constexpr PlaceRow kOverwritePlaces[] = {
    {"CONVERSION", true, true, true},       {"LIMITS", true, true, true},
    {"FORMAT", true, true, true},           {"PHYS_UNIT", true, true, true},
    {"EXTENDED_LIMITS", false, true, true}, {"INPUT_QUANTITY", false, false, true},
    {"MONOTONY", false, false, true},
};

template <typename Rows>
bool belongs(const Rows& rows, std::string_view keyword, Kind kind) {
    const auto row = std::find_if(std::begin(rows), std::end(rows),
                                  [&](const PlaceRow& each) { return each.keyword == keyword; });
    if (row == std::end(rows)) {
        return false;
    }
    return kind == Kind::Characteristic ? row->inCharacteristic
           : kind == Kind::Axis         ? row->inAxis
                                        : row->inMeasurement;
}

std::string_view blockOf(Kind kind) {
    return kind == Kind::Characteristic ? "CHARACTERISTIC"
           : kind == Kind::Axis         ? "AXIS_PTS"
                                        : "MEASUREMENT";
}

void add(std::string& text, std::string_view word) {
    text += ' ';
    text += word;
}

/// What stands behind the keyword of a bare part.
std::string_view parametersOf(std::string_view part) {
    TokenReader reader(part);
    reader.next();
    const std::size_t begin = reader.peek().begin;
    return part.substr(std::min(begin, part.size()));
}

std::string sizesText(const Array& array) {
    std::string text;
    for (const std::int64_t size : array.sizes) {
        add(text, std::to_string(size));
    }
    return text;
}

/// Whether a path to a component, in which any index may be missing, means the one with all of
/// them.
bool isPathTo(std::string_view path, std::string_view full) {
    while (!full.empty()) {
        if (!path.empty() && path.front() == full.front()) {
            path.remove_prefix(1);
            full.remove_prefix(1);
        } else if (full.front() == '[') {
            const std::size_t end = full.find(']');
            full.remove_prefix(end == std::string_view::npos ? full.size() : end + 1);
        } else {
            return false;
        }
    }
    return path.empty();
}

}  // namespace

std::string addressText(std::int64_t start, std::int64_t offset) {
    constexpr std::int64_t kLimit = std::int64_t{1} << 32;
    constexpr int kHexadecimal = 16;
    auto address = static_cast<std::uint64_t>(start) + static_cast<std::uint64_t>(offset);
    if (start < kLimit) {
        address &= UINT32_MAX;
    }
    std::array<char, 16> digits{};
    char* const end =
        std::to_chars(digits.data(), digits.data() + digits.size(), address, kHexadecimal).ptr;
    std::string text(digits.data(), end);
    for (char& digit : text) {
        digit = digit >= 'a' ? static_cast<char>(digit - 'a' + 'A') : digit;
    }
    return "0x" + text;
}

std::string movedInterface(const std::string& text, std::optional<std::int64_t> start,
                           std::int64_t offset) {
    const auto words = wordsOf(text);
    const auto blob = std::find(words.begin(), words.end(), "KP_BLOB");
    constexpr std::size_t kName = 2;
    constexpr std::ptrdiff_t kAddress = 2;
    if (words.size() <= kName || words[kName] != "ASAP1B_CCP" || words.end() - blob <= kAddress) {
        return text;
    }
    const std::string_view word = blob[kAddress];
    const std::optional<std::int64_t> own = integerOf(word);
    if (!own || *own == 0) {
        return text;
    }
    std::string changed = text;
    changed.replace(static_cast<std::size_t>(word.data() - text.data()), word.size(),
                    addressText(start.value_or(*own), offset));
    return changed;
}

std::string withSuffix(std::string_view displayIdentifier, std::string_view suffix) {
    const std::string_view name = valueOf(displayIdentifier);
    std::string text(displayIdentifier);
    if (name.back() == '"') {
        text.insert(text.size() - 1, suffix);
    } else if (isName(std::string(name) + std::string(suffix))) {
        text += suffix;
    }
    return text;
}

std::string movedSymbol(std::string_view symbolLink, std::int64_t offset) {
    const auto words = wordsOf(symbolLink);
    const std::int64_t own = integerOf(words.at(2)).value_or(0);
    return "SYMBOL_LINK " + std::string(words.at(1)) + " " + std::to_string(offsetSum(own, offset));
}

InstanceText InstanceText::read(BlockWalk& walk) {
    static const PartRule& rule =
        *findPart(*findModuleBlock("INSTANCE")->inner, Form::Block, "OVERWRITE");
    InstanceText instance;
    instance.name = walk.parameter(0);
    instance.text = walk.parameter(1);
    for (const FoundPart& part : walk.parts()) {
        const std::string_view text = walk.textOf(part);
        if (part.rule->keyword != "OVERWRITE") {
            instance.parts.push_back({part.rule, walk.editedText(part)});
            continue;
        }
        BlockWalk inner;
        inner.walk(text, rule);
        Overwrite overwrite{std::string(inner.parameter(0)),
                            integerOf(inner.parameter(1)).value_or(0),
                            {},
                            part.begin};
        for (const FoundPart& each : inner.parts()) {
            overwrite.parts.push_back({each.rule, std::string(inner.textOf(each))});
        }
        instance.overwrites.push_back(std::move(overwrite));
    }
    return instance;
}

std::string SignalText::name(const Leaf& leaf) const {
    return text_.name + std::string(leaf.name.suffix);
}

std::string SignalText::address(const Leaf& leaf) const {
    return addressText(instance_.offset, leaf.offset);
}

/// Whether an OVERWRITE means this part of the instance.
bool SignalText::means(const Overwrite& overwrite, const PartName& name) const {
    std::string_view path = overwrite.path;
    if (name.plainPath.empty()) {
        return path == kThis.substr(0, kThis.size() - 1) ||
               isPathTo(path, text_.name + std::string(name.path));
    }
    if (path.substr(0, kThis.size()) == kThis) {
        path.remove_prefix(kThis.size());
    }
    // An index of the instance itself stands in front.
    const std::string_view inside =
        name.path.substr(name.path.front() == '[' ? name.path.find('.') + 1 : 0);
    return isPathTo(path, inside) || path == name.path;
}

void SignalText::lose(const PartName& name) {
    for (Overwrite& overwrite : text_.overwrites) {
        overwrite.isUsed = overwrite.isUsed || means(overwrite, name);
    }
}

/// The overwrites of a signal, later ones first.
void SignalText::collectOverwrites(const Leaf& leaf) {
    overwrites_.clear();
    for (auto each = text_.overwrites.rbegin(); each != text_.overwrites.rend(); ++each) {
        if (means(*each, leaf.name)) {
            each->isUsed = true;
            overwrites_.push_back(&*each);
        }
    }
}

/// What is told instead for the value itself; empty if nothing is. The axis of axis points is
/// their value.
std::string_view SignalText::overwritten(std::string_view keyword, std::int64_t axis,
                                         Kind kind) const {
    for (const Overwrite* overwrite : overwrites_) {
        const std::int64_t told = kind == Kind::Axis && overwrite->axis == 1 ? 0 : overwrite->axis;
        for (auto part = overwrite->parts.rbegin(); part != overwrite->parts.rend(); ++part) {
            if (told == axis && part->keyword() == keyword) {
                return part->text;
            }
        }
    }
    return {};
}

/// Fixed parameters that an OVERWRITE may tell.
void SignalText::writeHead(const Leaf& leaf, std::string& block) const {
    const std::vector<std::string>& given = leaf.type.parameters;
    const Kind kind = leaf.type.kind;
    const auto parameter = [&](std::string_view keyword, std::string_view otherwise) {
        const std::string_view told = overwritten(keyword, 0, kind);
        add(block, told.empty() ? otherwise : parametersOf(told));
    };
    const auto limits = [&](std::size_t lower) {
        parameter("LIMITS", given[lower] + " " + given[lower + 1]);
    };
    block += "/begin ";
    block += blockOf(kind);
    add(block, name(leaf));
    add(block, leaf.name.plainPath.empty() ? std::string_view(text_.text) : given[1]);
    switch (kind) {
        case Kind::Measurement:
            add(block, given[2]);
            parameter("CONVERSION", given[3]);
            add(block, given[4]);
            add(block, given[5]);
            limits(6);
            block += " ECU_ADDRESS " + address(leaf);
            break;
        case Kind::Characteristic:
            add(block, given[2]);
            add(block, address(leaf));
            add(block, given[3]);
            add(block, given[4]);
            parameter("CONVERSION", given[5]);
            limits(6);
            break;
        case Kind::Axis:
            add(block, address(leaf));
            parameter("INPUT_QUANTITY", withThis(leaf, given[2]));
            add(block, given[3]);
            add(block, given[4]);
            parameter("CONVERSION", given[5]);
            add(block, given[6]);
            limits(7);
            break;
        case Kind::Blob:
        case Kind::Structure:
            block += " UBYTE NO_COMPU_METHOD 0 0 0 255 ECU_ADDRESS " + address(leaf);
            block += " MATRIX_DIM " + std::to_string(leaf.type.size);
            break;
    }
}

void SignalText::writeTypeParts(const Leaf& leaf, std::string& block) {
    const Kind kind = leaf.type.kind;
    std::int64_t axis = 0;
    for (const WrittenPart& part : leaf.type.parts) {
        const std::string_view keyword = part.keyword();
        if (keyword == "ENCODING" || keyword == "SYMBOL_TYPE_LINK") {
            continue;
        }
        if (keyword == "AXIS_DESCR") {
            ++axis;
            add(block, axisText(leaf, part, axis));
        } else if (keyword == "BYTE_ORDER" && isWordSwapped(valueOf(part.text))) {
            add(block, "BYTE_ORDER " + std::string(valueOf(part.text).substr(
                                           0, valueOf(part.text).find("_MSW"))));
        } else if (overwritten(keyword, 0, kind).empty()) {
            add(block, part.text);
        }
    }
    if (!leaf.array.sizes.empty()) {
        block += " MATRIX_DIM" + sizesText(leaf.array);
        if (leaf.array.isRowWise) {
            block += *leaf.array.isRowWise ? " LAYOUT ROW_DIR" : " LAYOUT COLUMN_DIR";
        }
    }
}

/// The optional parts that an OVERWRITE tells; what has no place there is remembered.
void SignalText::writeOverwrites(const Leaf& leaf, std::string& block) {
    const Kind kind = leaf.type.kind;
    for (const PlaceRow& row : kOverwritePlaces) {
        const std::string_view text = overwritten(row.keyword, 0, kind);
        const bool isHead = row.keyword == "CONVERSION" || row.keyword == "LIMITS" ||
                            row.keyword == "INPUT_QUANTITY";
        if (text.empty()) {
            continue;
        }
        if (!belongs(kOverwritePlaces, row.keyword, kind)) {
            misplaced_.push_back(std::string(row.keyword) + " of " + name(leaf));
        } else if (!isHead) {
            add(block, text);
        }
    }
}

void SignalText::writeInstanceParts(const Leaf& leaf, std::string& block) const {
    const Kind kind = leaf.type.kind;
    for (const WrittenPart& part : text_.parts) {
        const std::string_view keyword = part.keyword();
        if (!belongs(kInstancePlaces, keyword, kind)) {
            continue;
        }
        if (keyword == "DISPLAY_IDENTIFIER") {
            add(block, withSuffix(part.text, leaf.name.suffix));
        } else if (keyword == "SYMBOL_LINK") {
            add(block, movedSymbol(part.text, leaf.offset));
        } else if (keyword == "IF_DATA") {
            add(block, movedInterface(part.text, instance_.offset, leaf.offset));
        } else {
            add(block, part.text);
        }
    }
}

/// An AXIS_DESCR with what an OVERWRITE tells for this axis.
std::string SignalText::axisText(const Leaf& leaf, const WrittenPart& part,
                                 std::int64_t axis) const {
    // /begin AXIS_DESCR attribute input conversion points lower upper
    struct Row {
        std::string_view keyword;
        std::size_t first;
        std::size_t count;
    };
    static constexpr Row kParameters[] = {
        {"INPUT_QUANTITY", 3, 1}, {"CONVERSION", 4, 1}, {"LIMITS", 6, 2}};
    static constexpr std::string_view kOptional[] = {"EXTENDED_LIMITS", "FORMAT", "MONOTONY",
                                                     "PHYS_UNIT"};
    auto words = wordsOf(part.text);
    words.resize(words.size() - 2);  // without /end AXIS_DESCR
    const auto from = [&](std::string_view word) {
        return static_cast<std::size_t>(word.data() - part.text.data());
    };
    TextEdits edits;
    for (const Row& row : kParameters) {
        const std::string_view told = overwritten(row.keyword, axis, leaf.type.kind);
        if (!told.empty() && row.first + row.count <= words.size()) {
            const std::string_view last = words[row.first + row.count - 1];
            edits.replace(from(words[row.first]), from(last) + last.size(),
                          std::string(parametersOf(told)));
        }
    }
    for (const std::string_view keyword : kOptional) {
        const std::string_view told = overwritten(keyword, axis, leaf.type.kind);
        if (told.empty()) {
            continue;
        }
        const auto old = std::find(words.begin(), words.end(), keyword);
        const std::ptrdiff_t count = keyword == "EXTENDED_LIMITS" ? 2 : 1;
        if (words.end() - old > count) {
            edits.replace(from(*old), from(old[count]) + old[count].size(), std::string(told));
        } else {
            const std::size_t end = from(words.back()) + words.back().size();
            edits.replace(end, end, " " + std::string(told));
        }
    }
    return withThis(leaf, edits.apply(part.text));
}

/// The text with the names of components for what is meant as one of the same structure.
std::string SignalText::withThis(const Leaf& leaf, std::string_view text) const {
    if (text.find(kThis) == std::string_view::npos) {
        return std::string(text);
    }
    TextEdits edits;
    for (const std::string_view word : wordsOf(text)) {
        if (word.substr(0, kThis.size()) == kThis) {
            const auto from = static_cast<std::size_t>(word.data() - text.data());
            edits.replace(from, from + word.size(), resolveThis(leaf, word.substr(kThis.size())));
        }
    }
    return edits.apply(text);
}

/// The name of a component of the innermost structure that has one of that name.
std::string SignalText::resolveThis(const Leaf& leaf, std::string_view path) const {
    const std::string_view first = path.substr(0, path.find_first_of(".["));
    const auto has = [first](const Scope& scope) {
        const auto& components = scope.structure->components;
        return std::any_of(components.begin(), components.end(),
                           [first](const Member& each) { return each.name == first; });
    };
    const auto scope = std::find_if(leaf.scopes.rbegin(), leaf.scopes.rend(), has);
    const std::size_t length = scope != leaf.scopes.rend() ? scope->nameLength
                               : leaf.scopes.empty()       ? 0
                                                           : leaf.scopes.back().nameLength;
    std::string name = text_.name;
    name.append(leaf.name.suffix.substr(0, length)).append(options_.separator);
    for (const char byte : path) {
        byte == '.' ? name += options_.separator : name += byte;
    }
    return name;
}

std::string SignalText::write(const Leaf& leaf) {
    collectOverwrites(leaf);
    std::string block;
    writeHead(leaf, block);
    writeTypeParts(leaf, block);
    writeOverwrites(leaf, block);
    writeInstanceParts(leaf, block);
    block += " /end ";
    block += blockOf(leaf.type.kind);
    return block;
}

}  // namespace quillmark::preparing
