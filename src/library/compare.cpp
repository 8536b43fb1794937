#include "quillmark/compare.h"

#include <array>
#include <cstddef>
#include <utility>

#include "compare/compare_driver.h"
#include "compare/compare_report.h"
#include "library/finding_console.h"
#include "library/finding_data.h"
#include "library/verb_access.h"
#include "library/view_access.h"

namespace quillmark {

struct CompareOptionsData {
    bool verbose = false;
    FindingHandler findingHandler;
};

struct DifferenceData {
    DifferenceLevel level = DifferenceLevel::CannotCompare;
    CompareFinding finding;
    std::string consoleText;
};

struct CompareResultData {
    bool isComparable = false;
    std::vector<Difference> differences;
    Findings findings;
};

namespace {

constexpr std::string_view kOldFileFailed = "Reading of file 1 failed: '";
constexpr std::string_view kNewFileFailed = "Reading of file 2 failed: '";

/// What the console says of a level.
std::string_view labelOf(DifferenceLevel level) {
    constexpr std::array<std::string_view, 3> kLabels = {"Cannot compare modules", "Error",
                                                         "Warning"};
    return kLabels[static_cast<std::size_t>(level)];
}

Difference differenceOf(CompareFinding finding) {
    auto data = std::make_shared<DifferenceData>();
    data->level = static_cast<DifferenceLevel>(finding.level);
    data->consoleText.append(labelOf(data->level)).append(": ");
    data->consoleText.append(finding.message).append("\n");
    data->finding = std::move(finding);
    return Difference(std::move(data));
}

/// Whether a description can be compared; if not, the report says why.
bool isReadable(const Description& description, std::string_view failure, CompareReport& report) {
    if (!description.isComplete()) {
        addFinding(report, kLevelCannotCompare,
                   std::string(failure).append(description.name()).append("'"));
    }
    return description.isComplete();
}

bool compareInto(CompareReport& report, const Description& oldDescription,
                 const Description& newDescription, bool verbose, Console& console) {
    if (!isReadable(oldDescription, kOldFileFailed, report) ||
        !isReadable(newDescription, kNewFileFailed, report)) {
        return false;
    }
    const DescriptionData& oldData = *ViewAccess::data(oldDescription);
    const DescriptionData& newData = *ViewAccess::data(newDescription);
    return compareDescriptions(report, verbose, oldData.name, oldData.root, newData.name,
                               newData.root, console) == 0;
}

CompareResult resultOf(bool comparable, CompareReport report, Findings findings) {
    auto result = std::make_shared<CompareResultData>();
    result->isComparable = comparable;
    for (CompareFinding& finding : report) {
        result->differences.push_back(differenceOf(std::move(finding)));
    }
    result->findings = std::move(findings);
    return CompareResult(std::move(result));
}

}  // namespace

std::string_view textOf(DifferenceLevel level) noexcept {
    switch (level) {
        case DifferenceLevel::CannotCompare:
            return "cannot compare";
        case DifferenceLevel::Error:
            return "error";
        case DifferenceLevel::Warning:
            return "warning";
    }
    return {};
}

Difference::Difference(std::shared_ptr<const DifferenceData> data) noexcept
    : data_(std::move(data)) {}

DifferenceLevel Difference::level() const noexcept {
    return data_->level;
}

std::string_view Difference::what() const noexcept {
    return data_->finding.pair.what;
}

std::string_view Difference::oldValue() const noexcept {
    return data_->finding.pair.oldText;
}

std::string_view Difference::newValue() const noexcept {
    return data_->finding.pair.newText;
}

std::string_view Difference::text() const noexcept {
    return data_->finding.message;
}

std::string_view Difference::consoleText() const noexcept {
    return data_->consoleText;
}

CompareOptions::CompareOptions() : data_(std::make_unique<CompareOptionsData>()) {}
CompareOptions::CompareOptions(const CompareOptions& other)
    : data_(std::make_unique<CompareOptionsData>(*other.data_)) {}
CompareOptions::CompareOptions(CompareOptions&& other) noexcept = default;
CompareOptions::~CompareOptions() = default;

CompareOptions& CompareOptions::operator=(CompareOptions other) noexcept {
    data_.swap(other.data_);
    return *this;
}

CompareOptions& CompareOptions::setVerbose(bool verbose) {
    data_->verbose = verbose;
    return *this;
}

CompareOptions& CompareOptions::setFindingHandler(FindingHandler handler) {
    data_->findingHandler = std::move(handler);
    return *this;
}

CompareResult::CompareResult(std::shared_ptr<const CompareResultData> data) noexcept
    : data_(std::move(data)) {}

bool CompareResult::isComparable() const noexcept {
    return data_->isComparable;
}

const std::vector<Difference>& CompareResult::differences() const& noexcept {
    return data_->differences;
}

std::vector<Difference> CompareResult::differences() && {
    return data_->differences;
}

const Findings& CompareResult::findings() const& noexcept {
    return data_->findings;
}

Findings CompareResult::findings() && {
    return data_->findings;
}

CompareResult compare(const Description& oldDescription, const Description& newDescription,
                      const CompareOptions& options) {
    const CompareOptionsData& data = VerbAccess::data(options);
    Findings findings;
    FindingReceiver receiver(data.findingHandler, findings);
    FindingConsole console(receiver);
    CompareReport report;
    const bool comparable =
        compareInto(report, oldDescription, newDescription, data.verbose, console);
    return resultOf(comparable, std::move(report), std::move(findings));
}

CompareResult compareFiles(const std::string& oldFile, const std::string& newFile,
                           const CompareOptions& options) {
    const CompareOptionsData& data = VerbAccess::data(options);
    Findings findings;
    // One list for both files and for the comparison, in the order of the work.
    const FindingHandler handler =
        data.findingHandler ? data.findingHandler
                            : [&findings](const Finding& finding) { findings.push_back(finding); };
    ReadOptions reading;
    reading.setKeepTexts(false).setKeepSignals(false).setFindingHandler(handler);

    CompareReport report;
    const Description oldDescription = Description::readFile(oldFile, reading);
    if (!isReadable(oldDescription, kOldFileFailed, report)) {
        return resultOf(false, std::move(report), std::move(findings));
    }
    const Description newDescription = Description::readFile(newFile, reading);
    FindingReceiver receiver(handler, findings);
    FindingConsole console(receiver);
    const bool comparable =
        compareInto(report, oldDescription, newDescription, data.verbose, console);
    return resultOf(comparable, std::move(report), std::move(findings));
}

}  // namespace quillmark
