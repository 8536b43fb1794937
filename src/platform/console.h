#pragma once

#include <string_view>

namespace quillmark {

/// Where all console text of a run goes. Everything below the command line is handed a Console, so
/// that tests can collect what the program would have printed.
class Console {
  public:
    Console() = default;
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;
    virtual ~Console() = default;

    /// Puts text on standard output exactly as it stands, without an end of line.
    virtual void print(std::string_view text) = 0;

    /// Puts one line on standard error, after everything printed so far has reached standard
    /// output.
    virtual void printError(std::string_view line) = 0;

    /// The same for a line that refuses nothing, which looks no other.
    virtual void printCaution(std::string_view line) { printError(line); }

    /// Makes everything printed so far visible.
    virtual void flush() = 0;

    /// Prints one line on standard output and flushes it.
    void printLine(std::string_view line);
};

/// The console of the process. Output is buffered until flush() or the end of the object's life; a
/// standard output that cannot take the text is ignored, as there is nowhere left to say so.
class StandardConsole final : public Console {
  public:
    ~StandardConsole() override;

    void print(std::string_view text) override;
    void printError(std::string_view line) override;
    void flush() override;
};

}  // namespace quillmark
