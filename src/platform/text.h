#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace quillmark {

/// The texts one behind the other.
std::string joined(std::initializer_list<std::string_view> texts);

}  // namespace quillmark
