#include "platform/console.h"

#include <cstdio>

namespace quillmark {

void Console::printLine(std::string_view line) {
    print(line);
    print("\n");
    flush();
}

StandardConsole::~StandardConsole() {
    std::fflush(stdout);
}

void StandardConsole::print(std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
}

void StandardConsole::printError(std::string_view line) {
    flush();
    std::fwrite(line.data(), 1, line.size(), stderr);
    std::fputc('\n', stderr);
    std::fflush(stderr);
}

void StandardConsole::flush() {
    std::fflush(stdout);
}

}  // namespace quillmark
