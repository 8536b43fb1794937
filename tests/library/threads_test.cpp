// Under the thread sanitizer these find what descriptions have in common.

#include <atomic>
#include <cstddef>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "library/example.h"
#include "quillmark/quillmark.h"

namespace quillmark {
namespace {

constexpr std::size_t kThreads = 8;

/// A description with signals, groups, tables and what else there is, a little larger each time.
std::string textOf(std::size_t number) {
    std::string blocks =
        "/begin COMPU_METHOD C \"\" LINEAR \"%1\" \"V\" COEFFS_LINEAR 2 3 "
        "/end COMPU_METHOD\n";
    for (std::size_t i = 0; i < 300 * (number + 1); ++i) {
        blocks += "/begin MEASUREMENT s" + std::to_string(i) +
                  " \"long\" UBYTE C 0 0 0 1 ECU_ADDRESS " + std::to_string(i) +
                  " BIT_MASK 3 /end MEASUREMENT\n";
    }
    blocks +=
        "/begin GROUP G \"\" /begin REF_MEASUREMENT s0 s1 lost /end REF_MEASUREMENT "
        "/end GROUP\n";
    return moduleWith(blocks);
}

std::size_t signalCount(const Description& description) {
    std::size_t count = 0;
    for (const Signal signal : firstModule(description).signals()) {
        count += signal.name().empty() || !signal.conversion() ? 0U : 1U;
    }
    return count;
}

/// Reads, walks, converts and compares. Returns the include file.
std::string work(std::size_t number) {
    const std::string text = textOf(number);
    const Description description = described(text);
    EXPECT_EQ(signalCount(description), 300 * (number + 1));
    EXPECT_TRUE(firstModule(description).findSignal("s7").has_value());
    ConvertOptions options;
    options.setVersions(kVersions).setUser("bench").setCompress(number % 2 == 0);
    std::string document;
    EXPECT_TRUE(convert(description, options, document).isDone());
    std::string expanded;
    expand(document, expanded);
    const Description same = described(text);
    EXPECT_TRUE(compare(description, same).differences().empty());
    EXPECT_EQ(described("mistake").findings().size(), 1U);
    return document;
}

TEST(Threads, HaveADescriptionEach) {
    std::vector<std::thread> threads;
    std::atomic<std::size_t> bytes = 0;
    for (std::size_t number = 0; number < kThreads; ++number) {
        threads.emplace_back([&bytes, number] { bytes += work(number).size(); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_GT(bytes, 0U);
}

// Each thread reads one, works on with that of its neighbour and leaves that to be destroyed by
// the third.
TEST(Threads, HandDescriptionsOn) {
    std::vector<Description> descriptions(kThreads);
    for (std::size_t round = 0; round < 3; ++round) {
        std::vector<std::thread> threads;
        for (std::size_t number = 0; number < kThreads; ++number) {
            Description& mine = descriptions[(number + round) % kThreads];
            threads.emplace_back([&mine, number, round] {
                if (round == 0) {
                    mine = described(textOf(number));
                } else if (round == 1) {
                    std::string document;
                    EXPECT_TRUE(
                        convert(mine, ConvertOptions().setVersions(kVersions), document).isDone());
                } else {
                    mine = described(textOf(0));
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
    }
}

TEST(Threads, WalkOneDescriptionTogether) {
    const Description description = described(textOf(3));
    std::vector<std::thread> threads;
    for (std::size_t number = 0; number < kThreads; ++number) {
        threads.emplace_back([&description] { EXPECT_EQ(signalCount(description), 1200U); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

}  // namespace
}  // namespace quillmark
