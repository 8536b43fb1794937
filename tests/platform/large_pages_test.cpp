#include "platform/large_pages.h"

#include <cstddef>
#include <cstdint>
#include <numeric>
#include <vector>

#include <gtest/gtest.h>

namespace quillmark {
namespace {

using Table = std::vector<std::uint32_t, LargePageAllocator<std::uint32_t>>;

TEST(LargePageAllocator, LargeTablesBeginWithAPage) {
    Table table(kLargePageSize / sizeof(std::uint32_t));
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(table.data()) % kLargePageSize, 0U);
}

TEST(LargePageAllocator, TablesOfAnySizeKeepTheirEntries) {
    constexpr std::size_t kPage = kLargePageSize / sizeof(std::uint32_t);
    for (const std::size_t size : {std::size_t{1}, kPage - 1, kPage, kPage + 1, 3 * kPage}) {
        Table table(size);
        std::iota(table.begin(), table.end(), 1U);
        const Table copy = table;
        table.resize(2 * size);
        EXPECT_EQ(table.front(), 1U);
        EXPECT_EQ(table[size - 1], size);
        EXPECT_EQ(table.back(), 0U);
        EXPECT_EQ(copy.back(), size);
    }
}

}  // namespace
}  // namespace quillmark
