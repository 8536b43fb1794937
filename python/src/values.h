#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "item_list.h"
#include "quillmark/compare.h"
#include "quillmark/diff.h"
#include "quillmark/enumerations.h"
#include "quillmark/finding.h"
#include "quillmark/list.h"
#include "quillmark/number.h"
#include "quillmark/protocol.h"
#include "source.h"

namespace quillmark::python {

/// Texts are bytes in an unknown encoding: UTF-8 where they are valid in it, else Latin-1, in which
/// every byte means something.
py::object pythonText(std::string_view bytes);

/// None, an int or a float.
py::object pythonNumber(const Number& number);

/// The members of one enumeration by their codes; None for a code without text. They live as long
/// as the interpreter.
template <typename Enum>
inline std::vector<py::handle> enumMembers;

/// Finds the Python side of all enumerations; to be called once, when the module is imported.
void loadEnumerations();

template <typename T>
inline constexpr bool kIsOptional = false;
template <typename T>
inline constexpr bool kIsOptional<std::optional<T>> = true;

template <typename T>
inline constexpr bool kIsList = false;
template <typename T>
inline constexpr bool kIsList<List<T>> = true;

/// The Python side of what an attribute of a view gives.
template <typename T>
py::object pythonOf(const SourcePointer& source, const T& value) {
    if constexpr (kIsOptional<T>) {
        return value ? pythonOf(source, *value) : py::none();
    } else if constexpr (std::is_same_v<T, bool>) {
        return py::bool_(value);
    } else if constexpr (std::is_integral_v<T>) {
        return py::int_(value);
    } else if constexpr (std::is_enum_v<T>) {
        return py::reinterpret_borrow<py::object>(
            enumMembers<T>.at(static_cast<std::size_t>(value)));
    } else if constexpr (std::is_same_v<T, Number>) {
        return pythonNumber(value);
    } else if constexpr (std::is_same_v<T, std::string_view>) {
        return pythonText(value);
    } else if constexpr (std::is_same_v<T, std::vector<Number>>) {
        py::tuple numbers(value.size());
        for (std::size_t i = 0; i < value.size(); ++i) {
            numbers[i] = pythonNumber(value[i]);
        }
        return numbers;
    } else if constexpr (kIsList<T>) {
        return listOf(source, value);
    } else if constexpr (std::is_same_v<T, EventReference>) {
        return py::cast(value);
    } else if constexpr (std::is_same_v<T, Conversion>) {
        return py::cast(Held<T>{source, value, nullptr});
    } else {
        return py::cast(Held<T>{source, value});
    }
}

template <typename Item, typename Items>
py::object ListOf<Item, Items>::pythonItem(const Item& item) const {
    return pythonOf(source_, item);
}

}  // namespace quillmark::python
