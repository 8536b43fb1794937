#pragma once

#include <cstddef>

namespace quillmark {

/// Asks the system to back memory with large pages, which saves it thousands of small ones. The
/// block begins and ends at a multiple of the large page size, or the advice has no effect. It
/// changes nothing but speed; a system that knows no such advice ignores it.
void adviseLargePages(void* block, std::size_t size);

}  // namespace quillmark
