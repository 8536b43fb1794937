#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace quillmark {

/// The text at the place of a code, empty where there is none.
template <typename Code, std::size_t Count>
std::string_view textAt(const std::array<std::string_view, Count>& texts, Code code) {
    const auto place = static_cast<std::size_t>(code);
    return place < Count ? texts[place] : std::string_view();
}

}  // namespace quillmark
