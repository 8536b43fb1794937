#include "prepare/types.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>

namespace quillmark::preparing {

namespace {

constexpr ValueType kValueTypes[] = {
    {"UBYTE", 1, "ALIGNMENT_BYTE"},
    {"SBYTE", 1, "ALIGNMENT_BYTE"},
    {"UWORD", 2, "ALIGNMENT_WORD"},
    {"SWORD", 2, "ALIGNMENT_WORD"},
    {"ULONG", 4, "ALIGNMENT_LONG"},
    {"SLONG", 4, "ALIGNMENT_LONG"},
    {"A_UINT64", 8, "ALIGNMENT_INT64"},
    {"A_INT64", 8, "ALIGNMENT_INT64"},
    {"FLOAT16_IEEE", 2, "ALIGNMENT_FLOAT16_IEEE"},
    {"FLOAT32_IEEE", 4, "ALIGNMENT_FLOAT32_IEEE"},
    {"FLOAT64_IEEE", 8, "ALIGNMENT_FLOAT64_IEEE"},
};

struct SizeWord {
    std::string_view name;
    std::int64_t size;
};

constexpr SizeWord kPointers[] = {
    {"PBYTE", 1},
    {"PWORD", 2},
    {"PLONG", 4},
    {"PLONGLONG", 8},
};

constexpr SizeWord kReserved[] = {{"BYTE", 1}, {"WORD", 2}, {"LONG", 4}};

template <typename Rows>
auto find(const Rows& rows, std::string_view name) -> decltype(std::data(rows)) {
    const auto found = std::find_if(std::begin(rows), std::end(rows),
                                    [name](const auto& row) { return row.name == name; });
    return found == std::end(rows) ? nullptr : &*found;
}

struct KindRow {
    std::string_view keyword;
    Type::Kind kind;
};

constexpr KindRow kKinds[] = {
    {"TYPEDEF_STRUCTURE", Type::Kind::Structure},
    {"TYPEDEF_MEASUREMENT", Type::Kind::Measurement},
    {"TYPEDEF_CHARACTERISTIC", Type::Kind::Characteristic},
    {"TYPEDEF_AXIS", Type::Kind::Axis},
    {"TYPEDEF_BLOB", Type::Kind::Blob},
};

Type::Kind kindOf(std::string_view keyword) {
    return std::find_if(std::begin(kKinds), std::end(kKinds),
                        [&](const KindRow& row) { return row.keyword == keyword; })
        ->kind;
}

/// Takes what all members have from their optional parts.
void readMemberPart(std::string_view keyword, std::string_view text, Member& member) {
    if (keyword == "MATRIX_DIM") {
        member.array.sizes = readSizes(text);
    } else if (keyword == "LAYOUT") {
        member.array.isRowWise = valueOf(text) == "ROW_DIR";
    } else if (keyword == "ADDRESS_TYPE") {
        member.isPointer = isPointerType(valueOf(text));
    }
}

Member readComponent(std::string_view text, Place place) {
    static const PartRule& rule =
        *findPart(*findModuleBlock("TYPEDEF_STRUCTURE")->inner, Form::Block, "STRUCTURE_COMPONENT");
    BlockWalk walk;
    walk.walk(text, rule);
    Member member;
    member.name = std::string(walk.parameter(0));
    member.typeName = std::string(walk.parameter(1));
    member.offset = integerOf(walk.parameter(2)).value_or(0);
    member.place = place;
    for (const FoundPart& part : walk.parts()) {
        readMemberPart(part.rule->keyword, walk.textOf(part), member);
    }
    return member;
}

/// Takes what shapes a type from its optional parts; false for a part that is only written.
bool readShape(const FoundPart& part, std::string_view text, Type& type) {
    const std::string_view keyword = part.rule->keyword;
    const bool isMeasurement = type.kind == Type::Kind::Measurement;
    if (keyword == "ADDRESS_TYPE") {
        type.isPointer = isPointerType(valueOf(text));
    } else if (keyword == "MATRIX_DIM" && isMeasurement) {
        type.array.sizes = readSizes(text);
    } else if (keyword == "LAYOUT" && isMeasurement) {
        type.array.isRowWise = valueOf(text) == "ROW_DIR";
    } else {
        return false;
    }
    return true;
}

std::uint32_t linesBefore(std::string_view text, std::size_t position) {
    return static_cast<std::uint32_t>(
        std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(position), '\n'));
}

// --- Sizes of characteristics --------------------------------------------------------------------

/// No control unit has more bytes.
constexpr std::int64_t kMostBytes = INT32_MAX;

std::optional<std::int64_t> product(std::optional<std::int64_t> a, std::optional<std::int64_t> b) {
    if (!a || !b || *a < 0 || *b < 0 || (*b > 0 && *a > kMostBytes / *b)) {
        return std::nullopt;
    }
    return *a * *b;
}

/// What is needed to tell the size of one characteristic or axis.
struct Measure {
    const Type& type;
    const RecordLayout& layout;

    /// The points of an axis, by the letter that its components end in.
    [[nodiscard]] std::optional<std::int64_t> points(std::string_view axis) const {
        if (const auto fixed = layout.fixedPoints.find(axis); fixed != layout.fixedPoints.end()) {
            return fixed->second;
        }
        if (type.kind == Type::Kind::Axis) {
            constexpr std::size_t kMostPoints = 6;
            return integerOf(type.parameters[kMostPoints]);
        }
        static constexpr std::string_view kAxes[] = {"X", "Y", "Z", "4", "5"};
        std::size_t index = 0;
        for (const WrittenPart& part : type.parts) {
            if (part.keyword() == "AXIS_DESCR") {
                constexpr std::size_t kPoints = 5;
                const auto words = wordsOf(part.text);
                if (index < std::size(kAxes) && kAxes[index] == axis && words.size() > kPoints) {
                    return integerOf(words[kPoints]);
                }
                ++index;
            }
        }
        return std::nullopt;
    }

    /// The values besides those of axes.
    [[nodiscard]] std::optional<std::int64_t> values() const {
        const std::string_view kind = type.parameters[2];
        if (kind == "VALUE") {
            return 1;
        }
        if (kind == "ASCII" || kind == "VAL_BLK") {
            if (const WrittenPart* dim = type.find("MATRIX_DIM")) {
                Array array{readSizes(dim->text), {}};
                return static_cast<std::int64_t>(std::min<std::uint64_t>(array.count(), INT64_MAX));
            }
            const WrittenPart* number = type.find("NUMBER");
            return number == nullptr ? std::nullopt : integerOf(valueOf(number->text));
        }
        static constexpr std::string_view kAxes[] = {"X", "Y", "Z", "4", "5"};
        static constexpr std::string_view kKindsByAxes[] = {"CURVE", "MAP", "CUBOID", "CUBE_4",
                                                            "CUBE_5"};
        std::optional<std::int64_t> count = 1;
        for (std::size_t i = 0; i < std::size(kAxes); ++i) {
            count = product(count, points(kAxes[i]));
            if (kind == kKindsByAxes[i]) {
                return count;
            }
        }
        return std::nullopt;
    }

    /// How many values a component has.
    [[nodiscard]] std::optional<std::int64_t> countOf(
        const RecordLayout::Component& component) const {
        const std::string_view keyword = component.keyword;
        if (keyword == "FNC_VALUES") {
            return values();
        }
        if (keyword.substr(0, 9) == "AXIS_PTS_") {
            return points(keyword.substr(9));
        }
        if (keyword.substr(0, 13) == "AXIS_RESCALE_") {
            return product(2, component.parameters.size() > 1 ? integerOf(component.parameters[1])
                                                              : std::nullopt);
        }
        return 1;
    }

    /// Its bytes; `border` becomes the word for what it is aligned to.
    [[nodiscard]] std::optional<std::int64_t> sizeOf(const RecordLayout::Component& component,
                                                     std::string_view& border) const {
        if (component.parameters.empty()) {
            return std::nullopt;
        }
        if (component.keyword == "RESERVED") {
            const SizeWord* reserved = find(kReserved, component.parameters[0]);
            return reserved == nullptr ? std::nullopt : std::optional(reserved->size);
        }
        const ValueType* value = findValueType(component.parameters[0]);
        if (value == nullptr) {
            return std::nullopt;
        }
        border = value->alignment;
        if (const SizeWord* pointer = find(kPointers, component.parameters.back())) {
            return pointer->size;
        }
        return product(value->size, countOf(component));
    }
};

}  // namespace

std::int64_t offsetSum(std::int64_t a, std::int64_t b) {
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) + static_cast<std::uint64_t>(b));
}

std::int64_t offsetProduct(std::int64_t a, std::int64_t b) {
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) * static_cast<std::uint64_t>(b));
}

std::uint64_t Array::count() const {
    constexpr std::uint64_t kMost = std::numeric_limits<std::uint64_t>::max();
    std::uint64_t count = 1;
    for (const std::int64_t size : sizes) {
        const auto factor = static_cast<std::uint64_t>(size);
        if (count > kMost / factor) {
            return kMost;
        }
        count *= factor;
    }
    return count;
}

const WrittenPart* Type::find(std::string_view keyword) const {
    const auto found = std::find_if(parts.begin(), parts.end(), [keyword](const auto& part) {
        return part.keyword() == keyword;
    });
    return found == parts.end() ? nullptr : &*found;
}

const ValueType* findValueType(std::string_view name) {
    return find(kValueTypes, name);
}

std::vector<std::string_view> wordsOf(std::string_view text) {
    std::vector<std::string_view> words;
    TokenReader reader(text);
    for (Token token = reader.next(); token.kind != TokenKind::EndOfText && !token.isOpen();
         token = reader.next()) {
        words.push_back(reader.textOf(token));
    }
    return words;
}

std::string_view valueOf(std::string_view part) {
    TokenReader reader(part);
    reader.next();
    return reader.textOf(reader.next());
}

bool isWordSwapped(std::string_view byteOrder) {
    return byteOrder == "MSB_FIRST_MSW_LAST" || byteOrder == "MSB_LAST_MSW_FIRST";
}

bool isPointerType(std::string_view addressType) {
    return addressType != "DIRECT";
}

std::vector<std::int64_t> readSizes(std::string_view matrixDim) {
    std::vector<std::int64_t> sizes;
    for (const std::string_view word : wordsOf(matrixDim)) {
        if (const std::optional<std::int64_t> size = integerOf(word)) {
            sizes.push_back(std::max<std::int64_t>(*size, 0));
        }
    }
    while (!sizes.empty() && sizes.back() == 1) {
        sizes.pop_back();
    }
    sizes.erase(std::find(sizes.begin(), sizes.end(), 0), sizes.end());
    return sizes;
}

std::unique_ptr<Type> readType(std::string_view keyword, const BlockWalk& walk, Place place) {
    auto type = std::make_unique<Type>();
    type->kind = kindOf(keyword);
    type->name = walk.parameter(0);
    type->place = place;
    for (std::size_t i = 0; i < walk.parameterCount(); ++i) {
        type->parameters.emplace_back(walk.parameter(i));
    }
    if (walk.isBroken()) {
        return nullptr;
    }
    if (type->kind == Type::Kind::Structure || type->kind == Type::Kind::Blob) {
        type->size = integerOf(walk.parameter(2)).value_or(0);
    }
    for (const FoundPart& part : walk.parts()) {
        const std::string_view text = walk.textOf(part);
        if (part.rule->keyword == "STRUCTURE_COMPONENT") {
            Place at = place;
            at.line += linesBefore(walk.text(), part.begin);
            type->components.push_back(readComponent(text, at));
        } else if (!readShape(part, text, *type)) {
            type->parts.push_back({part.rule, std::string(text)});
        }
    }
    return type;
}

std::optional<Member> readInstance(const BlockWalk& walk, Place place) {
    if (walk.isBroken()) {
        return std::nullopt;
    }
    Member member;
    member.name = walk.parameter(0);
    member.typeName = walk.parameter(2);
    member.offset = integerOf(walk.parameter(3)).value_or(0);
    member.place = place;
    for (const FoundPart& part : walk.parts()) {
        readMemberPart(part.rule->keyword, walk.textOf(part), member);
    }
    return member;
}

void readAlignments(const BlockWalk& walk, Alignments& alignments) {
    for (const FoundPart& part : walk.parts()) {
        if (part.rule->keyword.substr(0, 10) == "ALIGNMENT_") {
            alignments[std::string(part.rule->keyword)] =
                integerOf(valueOf(walk.textOf(part))).value_or(1);
        }
    }
}

RecordLayout readRecordLayout(const BlockWalk& walk) {
    constexpr std::string_view kFixed = "FIX_NO_AXIS_PTS_";
    RecordLayout layout;
    readAlignments(walk, layout.alignments);
    for (const FoundPart& part : walk.parts()) {
        const std::string_view keyword = part.rule->keyword;
        const auto words = wordsOf(walk.textOf(part));
        if (keyword.substr(0, kFixed.size()) == kFixed) {
            layout.fixedPoints[std::string(keyword.substr(kFixed.size()))] =
                integerOf(words.at(1)).value_or(0);
        } else if (part.rule->parameters.size() > 1) {
            layout.components.push_back({std::string(keyword),
                                         integerOf(words.at(1)).value_or(0),
                                         {words.begin() + 2, words.end()}});
        }
    }
    return layout;
}

std::optional<std::int64_t> sizeOf(const Type& type, const RecordLayout& layout,
                                   const Alignments& moduleAlignments) {
    const Measure measure{type, layout};
    std::vector<const RecordLayout::Component*> inOrder;
    for (const RecordLayout::Component& component : layout.components) {
        inOrder.push_back(&component);
    }
    std::stable_sort(inOrder.begin(), inOrder.end(),
                     [](const auto* a, const auto* b) { return a->position < b->position; });
    std::int64_t size = 0;
    for (const RecordLayout::Component* component : inOrder) {
        std::string_view border;
        const std::optional<std::int64_t> own = measure.sizeOf(*component, border);
        if (!own) {
            return std::nullopt;
        }
        for (const Alignments* alignments : {&layout.alignments, &moduleAlignments}) {
            if (const auto found = alignments->find(border); found != alignments->end()) {
                const std::int64_t bytes = std::max<std::int64_t>(found->second, 1);
                size += (bytes - size % bytes) % bytes;
                break;
            }
        }
        if (size > kMostBytes) {
            return std::nullopt;
        }
        size += *own;
    }
    return inOrder.empty() ? std::nullopt : std::optional(size);
}

}  // namespace quillmark::preparing
