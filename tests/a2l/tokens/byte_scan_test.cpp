#include "a2l/tokens/byte_scan.h"

#include <algorithm>
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

TEST(ByteScan, LeadingSpacesAreCountedUpToEight) {
    for (std::size_t spaces = 0; spaces <= 10; ++spaces) {
        const std::string text = std::string(spaces, ' ') + "a" + std::string(kLookAhead, ' ');
        EXPECT_EQ(leadingSpaces(text.data()), std::min<std::size_t>(spaces, 8)) << spaces;
    }
}

}  // namespace
}  // namespace quillmark
