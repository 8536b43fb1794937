#include "platform/large_pages.h"

namespace quillmark {

// Large pages need a privilege there that an ordinary user does not have.
void adviseLargePages(void*, std::size_t) {}

}  // namespace quillmark
