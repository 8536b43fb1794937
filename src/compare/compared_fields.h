#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>

#include "compare/compare_report.h"
#include "compare/comparison.h"
#include "model/ph_object_list.h"
#include "model/ph_value.h"
#include "model/protocol_model.h"
#include "platform/text.h"

namespace quillmark {

/// The engine of the comparison: rows say what is compared and under which label, the functions
/// here walk them. A field is added to the comparison by adding a row.

/// One field of an Item, or one of its parts that may be missing.
template <typename Item>
struct FieldRow {
    using Has = bool (*)(const Item& item);

    using IntegerOf = std::int32_t (*)(const Item& item);
    struct BooleanOf {
        bool (*read)(const Item& item);
    };
    using TextOf = std::string_view (*)(const Item& item);
    using ValueOf = const PhValue* (*)(const Item& item);
    /// A value that is kept under a name.
    struct NamedValue {
        const PhValue* (*find)(const Item& item, std::string_view name);
        std::string_view name;
    };
    /// No value: a part that both items should have.
    struct Presence {
        Has has;
    };

    std::string_view label;
    std::variant<IntegerOf, BooleanOf, TextOf, ValueOf, NamedValue, Presence> read;
    /// What the finding says instead of the label and " values are not equal".
    std::string_view finding = {};
    /// The row is passed over unless both items have this part.
    Has needs = nullptr;
};

template <typename Item>
void compareField(const Comparison& comparison, std::string_view prefix, const FieldRow<Item>& row,
                  const Item& oldItem, const Item& newItem) {
    using Row = FieldRow<Item>;
    if (row.needs != nullptr && !(row.needs(oldItem) && row.needs(newItem))) {
        return;
    }
    const std::string shown = joined({prefix, row.label});
    const PairLabel label =
        row.finding.empty() ? PairLabel(shown) : PairLabel(shown, joined({prefix, row.finding}));
    std::visit(
        [&](const auto& read) {
            using Read = std::decay_t<decltype(read)>;
            if constexpr (std::is_same_v<Read, typename Row::IntegerOf>) {
                compareInt(comparison, label, read(oldItem), read(newItem));
            } else if constexpr (std::is_same_v<Read, typename Row::BooleanOf>) {
                compareBool(comparison, label, read.read(oldItem), read.read(newItem));
            } else if constexpr (std::is_same_v<Read, typename Row::TextOf>) {
                compareText(comparison, label, read(oldItem), read(newItem));
            } else if constexpr (std::is_same_v<Read, typename Row::ValueOf>) {
                compareValue(comparison, label, read(oldItem), read(newItem));
            } else if constexpr (std::is_same_v<Read, typename Row::NamedValue>) {
                compareValue(comparison, label, read.find(oldItem, read.name),
                             read.find(newItem, read.name));
            } else {
                checkPresent(comparison.report, read.has(oldItem), read.has(newItem), shown);
            }
        },
        row.read);
}

/// Compares all rows, in their order. `prefix` stands before every label.
template <typename Item>
void compareFields(const Comparison& comparison, std::string_view prefix,
                   std::span<const FieldRow<Item>> rows, const Item& oldItem, const Item& newItem) {
    for (const FieldRow<Item>& row : rows) {
        compareField(comparison, prefix, row, oldItem, newItem);
    }
}

/// An item without a number counts as number 0.
inline std::int32_t numberOr0(const PhValue* number) {
    return number == nullptr ? 0 : number->toInteger();
}

/// What stands before the labels of the item of that number.
inline std::string numberedPrefix(std::string_view kind, std::int32_t number) {
    return joined({kind, std::to_string(number)});
}

/// Items that are told apart by a number.
template <typename Item>
struct NumberedCollection {
    /// What a lost item is called, with its trailing blank.
    std::string_view kindWord;
    /// What stands before the number in the labels; a row's label begins behind the number.
    std::string_view labelPrefix;
    const PhObjectList<Item>& (*items)(const PhCommParam& parameters);
    const PhValue* (*number)(const Item& item);
    std::span<const FieldRow<Item>> rows;
};

/// Looks for each old item among the new ones and compares the rows of those that are found. Of new
/// items with one number only the first is ever found; new items without an old partner do not
/// matter to a logger that was set up with the old description.
template <typename Item>
void compareNumbered(const Comparison& comparison, const NumberedCollection<Item>& collection,
                     const PhCommParam& oldParameters, const PhCommParam& newParameters) {
    const auto numberOf = [&](const Item& item) { return numberOr0(collection.number(item)); };
    std::map<std::int32_t, const Item*> newByNumber;
    for (const Item& item : collection.items(newParameters)) {
        newByNumber.try_emplace(numberOf(item), &item);
    }
    for (const Item& oldItem : collection.items(oldParameters)) {
        const std::int32_t number = numberOf(oldItem);
        const auto found = newByNumber.find(number);
        if (found == newByNumber.end()) {
            const std::string item = numberedPrefix(collection.kindWord, number);
            addFinding(comparison.report, kLevelError, item + " is no longer present in new file",
                       lostPart(item));
            continue;
        }
        const std::string prefix = numberedPrefix(collection.labelPrefix, number);
        compareFields(comparison, prefix, collection.rows, oldItem, *found->second);
    }
}

/// Readers for rows whose field is a plain member: a handle to a value, a number, a flag.

template <typename Member>
struct MemberOf;
template <typename Class, typename Field>
struct MemberOf<Field Class::*> {
    using Owner = Class;
};

template <auto Member>
const PhValue* valueOf(const typename MemberOf<decltype(Member)>::Owner& item) {
    return (item.*Member).get();
}

template <auto Member>
std::int32_t integerOf(const typename MemberOf<decltype(Member)>::Owner& item) {
    return item.*Member;
}

template <auto Member>
bool flagOf(const typename MemberOf<decltype(Member)>::Owner& item) {
    return item.*Member;
}

}  // namespace quillmark
