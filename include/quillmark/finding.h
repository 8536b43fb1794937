#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "quillmark/export.h"

namespace quillmark {

struct FindingData;

/// How bad a finding is.
enum class Severity : std::uint8_t {
    Note,     ///< progress, or what was decided
    Warning,  ///< something was passed over; the work goes on
    Error,    ///< what was asked for is not done, or not completely
};

/// "note", "warning" or "error".
QUILLMARK_API std::string_view textOf(Severity severity) noexcept;

/// One thing that the library has to say. The library prints nothing: findings are values, to be
/// copied, kept and handed to other threads at will. Copies share their texts, which live as long
/// as any of them.
class QUILLMARK_API Finding {
  public:
    [[nodiscard]] Severity severity() const noexcept;

    /// The description that it is about, under the name with which it was read. Empty for a finding
    /// about no place in a description.
    [[nodiscard]] std::string_view file() const noexcept;

    /// The line of that place, counted from 1; 0 where there is none.
    [[nodiscard]] std::int32_t line() const noexcept;

    /// Where in the line the token begins that was read last, in bytes, counted from 1. 1 for a
    /// text that began on an earlier line; 0 where nobody knows.
    [[nodiscard]] std::int32_t column() const noexcept;

    /// What is wrong, without place, severity and line feed.
    [[nodiscard]] std::string_view text() const noexcept;

    /// The exact bytes that the program `quillmark` prints for it, with the line feed.
    [[nodiscard]] std::string_view consoleText() const noexcept;

    /// Whether the program prints them on standard error; else on standard output.
    [[nodiscard]] bool isForStandardError() const noexcept;

    /// For the library itself.
    explicit Finding(std::shared_ptr<const FindingData> data) noexcept;

  private:
    std::shared_ptr<const FindingData> data_;
};

/// In the order in which they were found.
using Findings = std::vector<Finding>;

/// Is told each finding at the moment it is found, in the thread that does the work. Must not
/// throw, and must not use the description that is being worked on.
using FindingHandler = std::function<void(const Finding& finding)>;

}  // namespace quillmark
