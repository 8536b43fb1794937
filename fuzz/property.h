#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/console.h"

/// What a target is: it is handed one input after the other, must survive all of them, and checks
/// what has to hold for every input. libFuzzer calls it, or the program of replay_main.cpp.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace quillmark {

/// Ends the process, which makes the input a finding, unless the property holds.
inline void require(bool holds, const char* property) {
    if (!holds) {
        std::fprintf(stderr, "Property violated: %s\n", property);
        std::abort();
    }
}

inline std::string_view textOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

/// A console that keeps what is printed and holds every piece to a length: a message of the reader
/// arrives in one piece, behind the piece that opens its line.
class LimitedConsole final : public Console {
  public:
    static constexpr std::size_t kLongestMessage = 499;

    void print(std::string_view text) override {
        require(text.size() <= kLongestMessage, "a message has at most 499 bytes");
        out += text;
    }
    void printError(std::string_view) override {
        require(false, "the reader leaves standard error alone");
    }
    void flush() override {}

    std::string out;
};

}  // namespace quillmark
