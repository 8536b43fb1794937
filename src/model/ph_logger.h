#pragma once

#include <cstdint>
#include <string_view>

namespace quillmark {

/// Receiver of reader messages, for programs that show them elsewhere than on the console. The
/// console program installs none.
class PhLogger {
  public:
    PhLogger() = default;
    PhLogger(const PhLogger&) = delete;
    PhLogger& operator=(const PhLogger&) = delete;
    virtual ~PhLogger() = default;

    /// The line of the description that the next message belongs to, counted from 1.
    void setLine(std::int32_t line) { line_ = line; }
    std::int32_t line() const { return line_; }

    /// Where in that line the token begins that was read last, in bytes, counted from 1: of a text
    /// its first character behind the quote, and 1 for what began on an earlier line.
    void setColumn(std::int32_t column) { column_ = column; }
    std::int32_t column() const { return column_; }

    /// A finished trace line; carries its own line feed.
    virtual void message(std::string_view text) = 0;

    /// A finding. `format` is the printf format in which file name, line and message belong.
    virtual void warning(const char* format, std::string_view fileName, std::int32_t line,
                         std::string_view message) = 0;
    virtual void error(const char* format, std::string_view fileName, std::int32_t line,
                       std::string_view message) = 0;

  private:
    std::int32_t line_ = 0;
    std::int32_t column_ = 0;
};

}  // namespace quillmark
