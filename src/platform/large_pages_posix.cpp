#include <sys/mman.h>

#include "platform/large_pages.h"

namespace quillmark {

void adviseLargePages([[maybe_unused]] void* block, [[maybe_unused]] std::size_t size) {
#ifdef MADV_HUGEPAGE
    madvise(block, size, MADV_HUGEPAGE);
#endif
}

}  // namespace quillmark
