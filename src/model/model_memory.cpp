#include "model/model_memory.h"

#include <cstdlib>
#include <new>

// What the plain form does without.
// IWYU pragma: begin_keep
#include <cstdint>
#include <utility>

#include "platform/compiler.h"
#include "platform/large_pages.h"
// IWYU pragma: end_keep

namespace quillmark {

/// The head of a chunk, which is aligned to its own size: the address of a block tells its chunk.
struct ModelChunk {
    /// Its blocks, and one more as long as a cursor stands in it.
    std::size_t living = 1;
};

namespace {

#if defined(QUILLMARK_PLAIN_MODEL_MEMORY)
// the build was asked for it
#elif defined(__SANITIZE_ADDRESS__)
#define QUILLMARK_PLAIN_MODEL_MEMORY
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QUILLMARK_PLAIN_MODEL_MEMORY
#endif
#endif

void* takeFromSystem(std::size_t size) {
    void* block = std::malloc(size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

#ifndef QUILLMARK_PLAIN_MODEL_MEMORY

constexpr std::size_t kAlignment = 8;
constexpr std::size_t kChunkSize = kLargePageSize;
/// What is larger has a block of its own from the system.
constexpr std::size_t kLargestShared = 32 * std::size_t{1024};

QM_QUICK_THREAD_LOCAL constinit thread_local ModelCursor cursor;

constexpr std::size_t rounded(std::size_t size) {
    return (size + kAlignment - 1) & ~(kAlignment - 1);
}

void removeOne(ModelChunk* chunk) {
    if (--chunk->living == 0) {
        ::operator delete (chunk, std::align_val_t{kChunkSize});
    }
}

/// Takes the cursor out of its chunk, which lives on with its blocks.
void leaveChunk(const ModelCursor& left) {
    if (left.chunk != nullptr) {
        removeOne(left.chunk);
    }
}

/// Ends the cursor of a thread with the thread.
struct ThreadEnd {
    bool isExpected = false;

    ~ThreadEnd() { leaveChunk(std::exchange(cursor, {})); }
};

ModelChunk* newChunk(bool isFirst) {
    void* memory = ::operator new (kChunkSize, std::align_val_t{kChunkSize});
    if (!isFirst) {
        // The first one stays in small pages: a short description fills but a few of them.
        adviseLargePages(memory, kChunkSize);
    }
    return new (memory) ModelChunk;
}

QM_OUT_OF_LINE void startChunk() {
    static thread_local ThreadEnd threadEnd;
    threadEnd.isExpected = true;  // its first use makes it
    const bool isEmpty = cursor.chunk != nullptr && cursor.chunk->living == 1;
    if (!isEmpty) {
        ModelChunk* const chunk = newChunk(cursor.chunk == nullptr);
        leaveChunk(std::exchange(cursor, {chunk, nullptr, nullptr}));
    }
    char* const start = reinterpret_cast<char*>(cursor.chunk);
    cursor.next = start + rounded(sizeof(ModelChunk));
    cursor.end = start + kChunkSize;
}

#endif

}  // namespace

#ifdef QUILLMARK_PLAIN_MODEL_MEMORY

// For memory checkers: every block is one of its own, so that they see each wrong access and each
// block that nobody released. In chunks they would see neither.

void* ModelMemory::allocate(std::size_t size) {
    return takeFromSystem(size);
}

void ModelMemory::release(void* block, std::size_t) noexcept {
    std::free(block);
}

ModelArena::~ModelArena() = default;

ModelArena::Use::Use(ModelArena& arena) noexcept : arena_(arena) {}

ModelArena::Use::~Use() = default;

#else

void* ModelMemory::allocate(std::size_t size) {
    if (size > kLargestShared) {
        return takeFromSystem(size);
    }
    size = rounded(size);
    if (static_cast<std::size_t>(cursor.end - cursor.next) < size) {
        startChunk();
    }
    char* block = cursor.next;
    cursor.next += size;
    ++cursor.chunk->living;
    return block;
}

void ModelMemory::release(void* block, std::size_t size) noexcept {
    if (size > kLargestShared) {
        std::free(block);
        return;
    }
    char* const start = static_cast<char*>(block);
    if (start + rounded(size) == cursor.next) {
        // The last one that was made gives its place back: objects that nobody keeps are made in
        // the same few lines of the cache, one after the other.
        cursor.next = start;
    }
    const std::size_t offset = reinterpret_cast<std::uintptr_t>(block) % kChunkSize;
    removeOne(reinterpret_cast<ModelChunk*>(start - offset));
}

ModelArena::~ModelArena() {
    leaveChunk(cursor_);
}

ModelArena::Use::Use(ModelArena& arena) noexcept : arena_(arena) {
    std::swap(cursor, arena_.cursor_);
}

ModelArena::Use::~Use() {
    std::swap(cursor, arena_.cursor_);
}

#endif

}  // namespace quillmark
