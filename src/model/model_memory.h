#pragma once

#include <cstddef>

namespace quillmark {

/// Memory for the model's objects and texts. A large description makes many millions of them,
/// nearly all of one lifetime, so they are laid one behind the other in chunks of two megabytes: an
/// allocation moves a cursor, a release counts down what lives in its chunk, and a chunk goes back
/// to the system whole, with its last inhabitant. What is made together lies together, which is how
/// it is read again.
///
/// Blocks are aligned for every fundamental type of at most eight bytes. Each thread has a cursor
/// of its own, and so has each ModelArena. Blocks may be released by any thread, but like the
/// counts of the objects, those of their chunks are plain: what lies together is for one thread at
/// a time.
class ModelMemory {
  public:
    /// Throws std::bad_alloc when the system has no more.
    static void* allocate(std::size_t size);

    /// `size` is that of the allocation.
    static void release(void* block, std::size_t size) noexcept;
};

struct ModelChunk;

/// Where the next block comes from.
struct ModelCursor {
    ModelChunk* chunk = nullptr;
    char* next = nullptr;
    char* end = nullptr;
};

/// Keeps the memory of one model apart from that of all others, so that threads can have a model
/// each, and hand it over to another thread. Blocks may outlive their arena.
class ModelArena {
  public:
    ModelArena() = default;
    ModelArena(const ModelArena&) = delete;
    ModelArena& operator=(const ModelArena&) = delete;
    ~ModelArena();  // NOLINT(performance-trivially-destructible): only the plain memory's is

    /// As long as it lives, what its thread allocates comes from the arena. An arena is used once
    /// at a time; who uses several ends the last one first.
    class Use {
      public:
        explicit Use(ModelArena& arena) noexcept;
        Use(const Use&) = delete;
        Use& operator=(const Use&) = delete;
        ~Use();  // NOLINT(performance-trivially-destructible): only the plain memory's is

      private:
        [[maybe_unused]] ModelArena& arena_;
    };

  private:
    ModelCursor cursor_;  ///< while it is used, the one that it stands in for
};

/// Base of what is allocated there.
struct InModelMemory {
    static void* operator new(std::size_t size) { return ModelMemory::allocate(size); }
    static void operator delete(void* block, std::size_t size) noexcept {
        ModelMemory::release(block, size);
    }
};

}  // namespace quillmark
