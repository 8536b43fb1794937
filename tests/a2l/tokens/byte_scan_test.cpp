#include "a2l/tokens/byte_scan.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace quillmark {
namespace {

constexpr std::string_view kNameBytes =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_";

/// Where a short cut stops that begins in front of `run` bytes of a plain one, behind which
/// `stop` stands.
std::size_t stopsAt(char* (*skip)(char*), char plain, std::size_t run, char stop) {
    std::string text(run, plain);
    text += stop;
    text.append(kLookAhead, '\xFF');
    return static_cast<std::size_t>(skip(text.data()) - text.data());
}

/// No short cut passes a byte that is not plain, wherever it stands among the bytes that are looked
/// at together.
void expectStops(char* (*skip)(char*), char plain, std::string_view passed) {
    for (int value = 0; value < 256; ++value) {
        const char byte = static_cast<char>(value);
        if (passed.find(byte) != std::string_view::npos) {
            continue;
        }
        for (std::size_t run = 0; run < 2 * kLookAhead + 2; ++run) {
            EXPECT_LE(stopsAt(skip, plain, run, byte), run) << value;
        }
    }
}

TEST(ByteScan, NamesStopAtEveryOtherByte) {
    expectStops(skipPlainNameBytes, 'a', kNameBytes);
}

TEST(ByteScan, TextsStopWhereTheLexerHasToLook) {
    std::string passed;
    for (char byte = ' '; byte <= '~'; ++byte) {
        if (byte != '"' && byte != '\\') {
            passed += byte;
        }
    }
    passed += '\x7F';
    expectStops(skipPlainTextBytes, 'a', passed);
}

#ifdef __SSE2__
TEST(ByteScan, PlainBytesAreAllPassed) {
    for (const char byte : kNameBytes) {
        EXPECT_EQ(stopsAt(skipPlainNameBytes, byte, 37, '.'), 37U) << byte;
        EXPECT_EQ(stopsAt(skipPlainTextBytes, byte, 37, '"'), 37U) << byte;
    }
    EXPECT_EQ(stopsAt(skipPlainTextBytes, ' ', 37, '\n'), 37U);
    EXPECT_EQ(stopsAt(skipPlainTextBytes, '~', 37, '\\'), 37U);
}
#endif

TEST(ByteScan, BlanksStopAtEveryOtherByte) {
    std::uint32_t lines = 0;
    for (const char blank : {' ', '\t', '\r', '\n'}) {
        const auto skip = [](char* position) {
            std::uint32_t ignored = 0;
            return skipPlainBlanks(position, ignored);
        };
        expectStops(skip, blank, " \t\r\n");
    }
    std::string text = "\n  \r\n\t                \n\n a" + std::string(kLookAhead, '\n');
    EXPECT_LE(skipPlainBlanks(text.data(), lines), text.data() + text.find('a'));
    EXPECT_LE(lines, 4U);
}

#ifdef __SSE2__
TEST(ByteScan, BlanksAreAllPassedAndTheirLineFeedsCounted) {
    for (std::size_t run = 0; run < 40; ++run) {
        for (const char blank : {' ', '\t', '\r', '\n'}) {
            std::uint32_t lines = 100;
            std::string text(run, blank);
            text += 'a';
            text.append(kLookAhead, '\n');
            EXPECT_EQ(skipPlainBlanks(text.data(), lines), text.data() + run);
            EXPECT_EQ(lines, 100 + (blank == '\n' ? run : 0));
        }
    }
}
#endif

TEST(ByteScan, IndentationIsSkippedWhateverTheLinesBefore) {
    Indentation indentation;
    std::mt19937 random(1);
    for (int i = 0; i < 3000; ++i) {
        const std::size_t width = random() % (kLookAhead + 3);
        std::string line(width, ' ');
        line += "\t\n\"a\xFF"[random() % 5];
        line.append(kLookAhead, " x"[random() % 2]);
        EXPECT_EQ(indentation.skip(line.data()), line.data() + std::min(width, kLookAhead));
    }
}

TEST(ByteScan, DigitsAreCountedAndRead) {
    std::mt19937 random(1);
    for (int i = 0; i < 3000; ++i) {
        const std::size_t count = 1 + random() % kDigitsTogether;
        std::string digits;
        std::string hexDigits;
        for (std::size_t digit = 0; digit < count; ++digit) {
            digits += "0123456789"[random() % 10];
            hexDigits += "0123456789abcdefABCDEF"[random() % 22];
        }
        const std::string end(kLookAhead, "/:g@`G\xFF \x80"[random() % 9]);
        EXPECT_EQ(leadingDigits((digits + end).data()), count);
        EXPECT_EQ(leadingHexDigits((hexDigits + end).data()), count);
        EXPECT_EQ(decimalDigits((digits + end).data(), count), std::stoul(digits));
        EXPECT_EQ(hexadecimalDigits((hexDigits + end).data(), count),
                  std::stoul(hexDigits, nullptr, 16));
    }
    const std::string many(kLookAhead, '7');
    EXPECT_EQ(leadingDigits(many.data()), kLookAhead);
    EXPECT_EQ(leadingHexDigits(many.data()), kLookAhead);
}

}  // namespace
}  // namespace quillmark
