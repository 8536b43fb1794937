#pragma once

#include <string>
#include <string_view>

#include "library/finding_data.h"
#include "platform/console.h"

namespace quillmark {

/// Makes a finding of each line that would be printed.
class FindingConsole final : public Console {
  public:
    /// `receiver` outlives this object.
    explicit FindingConsole(FindingReceiver& receiver) : receiver_(receiver) {}

    void print(std::string_view text) override;
    void printError(std::string_view line) override;
    void printCaution(std::string_view line) override;
    void flush() override {}

  private:
    void takeLine(std::string_view line, Severity severity, bool isForStandardError);

    FindingReceiver& receiver_;
    std::string line_;  ///< as far as it was printed
};

}  // namespace quillmark
