#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "quillmark/description.h"
#include "quillmark/export.h"
#include "quillmark/finding.h"

namespace quillmark {

struct CompareOptionsData;
struct CompareResultData;
struct DifferenceData;
struct VerbAccess;

/// How bad a difference is.
enum class DifferenceLevel : std::uint8_t {
    CannotCompare,  ///< the descriptions cannot be compared, or no further
    Error,          ///< a logger that was set up for the old one cannot measure the new one
    Warning,
};
/// "cannot compare", "error" or "warning".
QUILLMARK_API std::string_view textOf(DifferenceLevel level) noexcept;

/// One difference in how two control units are measured. Copies share their texts.
class QUILLMARK_API Difference {
  public:
    [[nodiscard]] DifferenceLevel level() const noexcept;

    /// What was compared, such as "daq capabilities:t1"; empty where the descriptions cannot be
    /// compared.
    [[nodiscard]] std::string_view what() const noexcept;

    /// Both values as the program shows them with -v: "NULL" for an absent one, "true" and "false";
    /// for a part that only one description has, "present" and "absent". Empty where nothing was
    /// compared.
    [[nodiscard]] std::string_view oldValue() const noexcept;
    [[nodiscard]] std::string_view newValue() const noexcept;

    /// The sentence of the report.
    [[nodiscard]] std::string_view text() const noexcept;

    /// The exact bytes that the program `quillmark` prints for it, with the line feed.
    [[nodiscard]] std::string_view consoleText() const noexcept;

    /// For the library itself.
    explicit Difference(std::shared_ptr<const DifferenceData> data) noexcept;

  private:
    std::shared_ptr<const DifferenceData> data_;
};

/// How descriptions are compared. Options are a value: copies are independent of each other.
class QUILLMARK_API CompareOptions {
  public:
    CompareOptions();
    CompareOptions(const CompareOptions& other);
    CompareOptions(CompareOptions&& other) noexcept;
    CompareOptions& operator=(CompareOptions other) noexcept;
    ~CompareOptions();

    /// Whether each pair of values that is compared becomes a note.
    CompareOptions& setVerbose(bool verbose);

    /// Is told each note at once: what is compared with what and, if verbose, each pair. With
    /// a handler, the result keeps none.
    CompareOptions& setFindingHandler(FindingHandler handler);

  private:
    friend struct VerbAccess;
    std::unique_ptr<CompareOptionsData> data_;
};

/// What a comparison has to say.
class QUILLMARK_API CompareResult {
  public:
    /// Whether the modules could be compared, whatever was found.
    [[nodiscard]] bool isComparable() const noexcept;

    /// In the order in which they were found.
    [[nodiscard]] const std::vector<Difference>& differences() const& noexcept;
    [[nodiscard]] std::vector<Difference> differences() &&;

    /// Notes, and what was found while the descriptions were read. Empty where a handler was told.
    [[nodiscard]] const Findings& findings() const& noexcept;
    [[nodiscard]] Findings findings() &&;

    /// For the library itself.
    explicit CompareResult(std::shared_ptr<const CompareResultData> data) noexcept;

  private:
    std::shared_ptr<const CompareResultData> data_;
};

/// Compares how the control units of two complete descriptions are measured, of which each must
/// have exactly one module. Signals are not looked at.
QUILLMARK_API CompareResult compare(const Description& oldDescription,
                                    const Description& newDescription,
                                    const CompareOptions& options = {});

/// Reads both first, without keeping their signals. One that cannot be read is a difference of
/// level CannotCompare.
QUILLMARK_API CompareResult compareFiles(const std::string& oldFile, const std::string& newFile,
                                         const CompareOptions& options = {});

}  // namespace quillmark
