#include "model/model_memory.h"

#include <cstdint>
#include <cstdlib>
#include <new>

#include "platform/large_pages.h"

namespace quillmark {

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

/// The head of a chunk, which is aligned to its own size: the address of a block tells its chunk.
struct Chunk {
    std::size_t living = 0;
};

struct Cursor {
    Chunk* chunk = nullptr;
    char* next = nullptr;
    char* end = nullptr;
};

constinit Cursor cursor;

constexpr std::size_t rounded(std::size_t size) {
    return (size + kAlignment - 1) & ~(kAlignment - 1);
}

char* firstBlock(Chunk* chunk) {
    return reinterpret_cast<char*>(chunk) + rounded(sizeof(Chunk));
}

void startChunk() {
    void* memory = ::operator new (kChunkSize, std::align_val_t{kChunkSize});
    if (cursor.chunk != nullptr) {
        // The first one stays in small pages: a short description fills but a few of them.
        adviseLargePages(memory, kChunkSize);
    }
    cursor.chunk = new (memory) Chunk;
    cursor.next = firstBlock(cursor.chunk);
    cursor.end = static_cast<char*>(memory) + kChunkSize;
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
    const std::size_t offset = reinterpret_cast<std::uintptr_t>(block) % kChunkSize;
    auto* chunk = reinterpret_cast<Chunk*>(static_cast<char*>(block) - offset);
    if (--chunk->living != 0) {
        return;
    }
    if (chunk == cursor.chunk) {
        cursor.next = firstBlock(chunk);  // nothing lives in it: begin it again
    } else {
        ::operator delete (chunk, std::align_val_t{kChunkSize});
    }
}

#endif

}  // namespace quillmark
