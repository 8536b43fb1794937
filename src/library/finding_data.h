#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "quillmark/finding.h"

namespace quillmark {

/// What a finding says. One text holds all of them: what the console shows.
struct FindingData {
    Severity severity = Severity::Note;
    std::int32_t line = 0;
    std::int32_t column = 0;
    bool isForStandardError = false;
    std::string file;
    std::string text;
    std::string consoleText;
};

/// Where findings go: to the handler, if there is one, else to the end of a list.
class FindingReceiver {
  public:
    /// Both outlive this object.
    FindingReceiver(const FindingHandler& handler, Findings& list)
        : handler_(handler), list_(list) {}

    void take(FindingData data);

    /// How many there were, notes included.
    std::size_t count() const { return count_; }

  private:
    const FindingHandler& handler_;
    Findings& list_;
    std::size_t count_ = 0;
};

}  // namespace quillmark
