#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "a2ltool/tool_status.h"

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace quillmark::a2ltool {

/// How something on the command line is named, shown and explained.
struct OptionText {
    const char* names;  ///< "-o,--output", or a bare word for an operand
    const char* shown;  ///< what the help shows in place of the value, as in "-o FILE"
    std::string help;
};

/// Says what is wrong with a value, or nothing.
using OptionCheck = std::string (*)(const std::string& value);

/// The part of the command line that belongs to a command. The command declares what it takes; the
/// values go into its own variables, which must be there until the command has run. What the
/// command line does not name stays as it is.
class CommandOptions {
  public:
    /// `part` belongs to the CommandLine that has made this.
    explicit CommandOptions(CLI::App& part) : part_(part) {}

    void addOperand(const OptionText& text, std::string& value);
    void addRequiredOperand(const OptionText& text, std::string& value);
    /// One or more.
    void addRequiredOperands(const OptionText& text, std::vector<std::string>& values);

    void addOption(const OptionText& text, std::string& value);
    void addOption(const OptionText& text, std::string& value, OptionCheck check);
    void addOption(const OptionText& text, std::uint64_t& value);
    /// One that may be repeated, with one value each time.
    void addOption(const OptionText& text, std::vector<std::string>& values);
    /// One whose value is one of `words`.
    void addChoice(const OptionText& text, std::string& value,
                   const std::vector<std::string>& words);
    /// One that may be repeated, whose values are of `words`, separated by commas.
    void addChoices(const OptionText& text, std::vector<std::string>& values,
                    const std::vector<std::string>& words);

    void addFlag(const char* names, bool& value, const std::string& help);
    /// One that the help shows under the heading `group`.
    void addFlag(const char* names, bool& value, const std::string& help, const char* group);

  private:
    CLI::App& part_;
};

/// The command line of quillmark-a2l. The one source behind this header knows the parser: to
/// compile it takes as long as the rest of the folder.
class CommandLine {
  public:
    CommandLine();
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;
    ~CommandLine();

    CommandOptions addCommand(const char* word, const char* summary);

    /// Reads the arguments into what the commands have declared. Returns which command is to run,
    /// counted from 0 in the order in which they were added. Where none is (help was asked for, or
    /// there is a mistake, which has been told), the status with which the program ends.
    std::variant<std::size_t, ToolStatus> parse(int argumentCount, const char* const* arguments);

  private:
    std::unique_ptr<CLI::App> parser_;
    std::vector<const CLI::App*> commands_;
};

}  // namespace quillmark::a2ltool
