#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "a2l/reader/message_text.h"
#include "model/module_model.h"
#include "model/ph_logger.h"
#include "platform/console.h"

namespace quillmark {

/// A place in a description, see PhLogger.
struct TextPlace {
    std::int32_t line = 0;
    std::int32_t column = 0;
};

/// What begins each console line of a reader.
inline constexpr std::string_view kConsoleMark = "-: ";

/// The console line of a finding behind that, with its line feed.
MessageText findingText(bool isError, std::string_view fileName, std::int32_t line,
                        std::string_view message);

/// What of a description the model gets. The rest is read and judged all the same, with every
/// message; only nothing is made of it.
struct ModelParts {
    /// Signals and what describes them: conversions, units, record layouts, groups, functions,
    /// frames. Without them the model has what tells how a control unit is reached.
    bool signals = true;
    /// Characteristics that are curves, maps, cuboids or blocks of values: no logger records them.
    bool arrays = true;
    /// Which signals and groups a group, a function, a frame or a virtual signal names; nothing
    /// without the signals themselves.
    bool members = true;
    /// The ranges of physical values.
    bool limits = true;
    /// How values are to be shown, and formulas.
    bool formats = true;
    /// The blocks' long identifiers: a sixth of the model's memory.
    bool longIdentifiers = true;
};

/// A reader of one description file format into the model: what all formats have in common, which
/// is the file's name and where messages go. Messages go to the logger if there is one, otherwise
/// to the console.
class PhReader {
  public:
    /// `console` outlives the reader. A reader without a file name parses nothing.
    PhReader(Console& console, std::optional<std::string> fileName)
        : console_(console), fileName_(std::move(fileName)) {}
    PhReader(const PhReader&) = delete;
    PhReader& operator=(const PhReader&) = delete;
    virtual ~PhReader() = default;

    /// The format's short name.
    virtual std::string_view formatName() const = 0;

    /// Reads the whole file into `root`. 0 on success, -2 when the file cannot be opened, -1 for
    /// any other failure; what was read before a failure stays in `root`.
    virtual int parse(PhRoot& root) = 0;

    const std::optional<std::string>& fileName() const { return fileName_; }
    void setFileName(std::optional<std::string> name) { fileName_ = std::move(name); }

    /// Not owned; nullptr for none.
    void setLogger(PhLogger* logger) { logger_ = logger; }
    PhLogger* logger() const { return logger_; }

    /// Whether each block prints a trace line.
    void setVerbose(bool verbose) { verbose_ = verbose; }
    bool verbose() const { return verbose_; }

    /// Whether the verbal-table parsers trace each default text.
    void setTraceDefaultValues(bool trace) { traceDefaultValues_ = trace; }
    bool traceDefaultValues() const { return traceDefaultValues_; }

    /// What the model gets: everything, unless told otherwise.
    void setParts(const ModelParts& parts) {
        parts_ = parts;
        parts_.arrays = parts.arrays && parts.signals;
        parts_.members = parts.members && parts.signals;
        parts_.limits = parts.limits && parts.signals;
        parts_.formats = parts.formats && parts.signals;
    }
    const ModelParts& parts() const { return parts_; }

    /// Puts out one trace text, which carries its own line feed.
    void trace(std::string_view format, std::initializer_list<MessageArgument> arguments = {});

  protected:
    /// Puts out a finding of either kind, with file name and place.
    void report(bool isError, TextPlace place, std::string_view message);

  private:
    void print(const MessageText& text);

    Console& console_;
    std::optional<std::string> fileName_;
    PhLogger* logger_ = nullptr;
    bool verbose_ = false;
    bool traceDefaultValues_ = false;
    ModelParts parts_;
};

}  // namespace quillmark
