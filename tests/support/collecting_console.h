#pragma once

#include <string>
#include <string_view>

#include "platform/console.h"

namespace quillmark {

/// A console that keeps what is printed, for comparison with the expected text.
class CollectingConsole final : public Console {
  public:
    void print(std::string_view text) override { out += text; }
    void printError(std::string_view line) override {
        err += line;
        err += '\n';
    }
    void flush() override {}

    std::string out;
    std::string err;
};

}  // namespace quillmark
