#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

namespace quillmark {

/// Gives bytes from front to end: puts up to `size` of them (at least 1) into `buffer` and returns
/// how many. 0 is the end, at this call and at every later one. Must not throw.
using ByteSource = std::function<std::size_t(char* buffer, std::size_t size)>;

/// Takes the next bytes, which are gone after the call. false: no more are wanted, or none can be
/// taken; the work then ends soon and tells so. Must not throw.
using ByteSink = std::function<bool(std::string_view bytes)>;

}  // namespace quillmark
