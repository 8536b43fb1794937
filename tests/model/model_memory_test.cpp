#include "model/model_memory.h"

#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace quillmark
