#pragma once

#include <cstddef>
#include <new>

namespace quillmark {

/// The size of a large page on the machines that the program runs on.
constexpr std::size_t kLargePageSize = std::size_t{2} * 1024 * 1024;

/// Asks the system to back memory with large pages, which saves it thousands of small ones. The
/// block begins and ends at a multiple of the large page size, or the advice has no effect. It
/// changes nothing but speed; a system that knows no such advice ignores it.
void adviseLargePages(void* block, std::size_t size);

/// Allocator for large tables that are read in no order: on small pages, the processor would wait
/// for the address of nearly every entry as well as for the entry. What is smaller than a large
/// page is allocated as ever.
template <typename T>
struct LargePageAllocator {
    using value_type = T;

    LargePageAllocator() = default;
    template <typename U>
    explicit LargePageAllocator(const LargePageAllocator<U>&) {}

    static T* allocate(std::size_t count) {
        const std::size_t size = count * sizeof(T);
        if (size < kLargePageSize) {
            return static_cast<T*>(::operator new(size));
        }
        void* block = ::operator new (size, std::align_val_t{kLargePageSize});
        adviseLargePages(block, size);
        return static_cast<T*>(block);
    }

    static void deallocate(T* block, std::size_t count) noexcept {
        if (count * sizeof(T) < kLargePageSize) {
            ::operator delete(block);
        } else {
            ::operator delete (block, std::align_val_t{kLargePageSize});
        }
    }

    friend bool operator==(const LargePageAllocator&, const LargePageAllocator&) { return true; }
};

}  // namespace quillmark
