#pragma once

#include <cstddef>

namespace quillmark {

/// Memory for the model's objects and texts. A large description makes many millions of them,
/// nearly all of one lifetime, so they are laid one behind the other in chunks of two megabytes: an
/// allocation moves a cursor, a release counts down what lives in its chunk, and a chunk goes back
/// to the system whole, with its last inhabitant. What is made together lies together, which is how
/// it is read again.
///
/// Blocks are aligned for every fundamental type of at most eight bytes. Like the counts of the
/// objects, this is for one thread.
class ModelMemory {
  public:
    /// Throws std::bad_alloc when the system has no more.
    static void* allocate(std::size_t size);

    /// `size` is that of the allocation.
    static void release(void* block, std::size_t size) noexcept;
};

/// Base of what is allocated there.
struct InModelMemory {
    static void* operator new(std::size_t size) { return ModelMemory::allocate(size); }
    static void operator delete(void* block, std::size_t size) noexcept {
        ModelMemory::release(block, size);
    }
};

}  // namespace quillmark
