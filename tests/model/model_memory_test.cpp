#include "model/model_memory.h"

#include <cstdint>
#include <cstring>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/sanitizer.h"

namespace quillmark {
namespace {

TEST(ModelMemory, BlocksAreAlignedAndDoNotOverlap) {
    std::vector<std::pair<char*, std::size_t>> blocks;
    for (std::size_t i = 0; i < 20000; ++i) {
        const std::size_t size = 1 + i % 700;
        auto* block = static_cast<char*>(ModelMemory::allocate(size));
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % 8, 0U);
        std::memset(block, static_cast<int>(i % 251), size);
        blocks.emplace_back(block, size);
    }
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        const auto& [block, size] = blocks[i];
        EXPECT_EQ(block[0], static_cast<char>(i % 251));
        EXPECT_EQ(block[size - 1], static_cast<char>(i % 251));
    }
    for (const auto& [block, size] : blocks) {
        ModelMemory::release(block, size);
    }
}

TEST(ModelMemory, LargeBlocksAreServedToo) {
    constexpr std::size_t kSize = std::size_t{8} * 1024 * 1024;
    auto* block = static_cast<char*>(ModelMemory::allocate(kSize));
    std::memset(block, 1, kSize);
    ModelMemory::release(block, kSize);
}

// A leak of chunks would make this take some ten gigabytes.
TEST(ModelMemory, ReleasedChunksAreUsedAgain) {
    for (int i = 0; i < 500000; ++i) {
        void* block = ModelMemory::allocate(20000);
        ModelMemory::release(block, 20000);
    }
}

TEST(ModelMemory, WhatIsReleasedFirstGivesItsPlaceBack) {
    if (kHasAddressSanitizer) {
        GTEST_SKIP() << "with the sanitizer each block comes from the heap by itself";
    }
    ModelArena arena;  // nothing else was made in it, so that no chunk ends among these blocks
    const ModelArena::Use use(arena);
    void* const kept = ModelMemory::allocate(24);
    void* const below = ModelMemory::allocate(121);
    void* const top = ModelMemory::allocate(17);
    ModelMemory::release(top, 17);
    ModelMemory::release(below, 121);
    void* const again = ModelMemory::allocate(64);
    EXPECT_EQ(again, below);
    ModelMemory::release(kept, 24);  // something stands behind it
    void* const behind = ModelMemory::allocate(8);
    EXPECT_NE(behind, kept);
    EXPECT_EQ(behind, static_cast<char*>(again) + 64);
    ModelMemory::release(behind, 8);
    ModelMemory::release(again, 64);
}

// A block that was not counted in its own chunk would be given out twice, or its chunk taken away.
TEST(ModelMemory, BlocksOfAnArenaOutliveItAndAreReleasedByAnotherThread) {
    constexpr std::size_t kSize = 30000;
    std::vector<char*> blocks;
    {
        ModelArena arena;
        const ModelArena::Use use(arena);
        for (int i = 0; i < 200; ++i) {
            blocks.push_back(static_cast<char*>(ModelMemory::allocate(kSize)));
            std::memset(blocks.back(), i, kSize);
        }
    }
    auto* outside = static_cast<char*>(ModelMemory::allocate(kSize));
    std::memset(outside, 0x55, kSize);
    std::thread([&] {
        for (std::size_t i = 0; i < blocks.size(); ++i) {
            EXPECT_EQ(blocks[i][kSize - 1], static_cast<char>(i));
            ModelMemory::release(blocks[i], kSize);
        }
    }).join();
    EXPECT_EQ(outside[kSize - 1], 0x55);
    ModelMemory::release(outside, kSize);
}

TEST(ModelMemory, ArenasAreUsedWithinEachOther) {
    ModelArena outer;
    ModelArena inner;
    const ModelArena::Use useOuter(outer);
    void* const first = ModelMemory::allocate(100);
    {
        const ModelArena::Use useInner(inner);
        ModelMemory::release(ModelMemory::allocate(100), 100);
    }
    void* const second = ModelMemory::allocate(100);
    EXPECT_NE(first, second);
    ModelMemory::release(second, 100);
    ModelMemory::release(first, 100);
}

// Under the thread sanitizer this finds what threads have in common.
TEST(ModelMemory, ThreadsWorkAtTheSameTime) {
    std::vector<std::thread> threads;
    for (std::size_t number = 0; number < 4; ++number) {
        threads.emplace_back([number] {
            ModelArena arena;
            const ModelArena::Use use(arena);
            std::vector<char*> blocks;
            for (std::size_t i = 0; i < 20000; ++i) {
                blocks.push_back(static_cast<char*>(ModelMemory::allocate(number + 1 + i % 300)));
                *blocks.back() = static_cast<char>(number);
            }
            for (std::size_t i = 0; i < blocks.size(); ++i) {
                EXPECT_EQ(*blocks[i], static_cast<char>(number));
                ModelMemory::release(blocks[i], number + 1 + i % 300);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

}  // namespace
}  // namespace quillmark
