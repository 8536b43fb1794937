// The preparation of descriptions, in memory.
#include <memory>
#include <string>
#include <vector>

#include "a2l/ph_a2l.h"
#include "fuzz/property.h"
#include "platform/input_file.h"
#include "prepare/prepare.h"

namespace quillmark {
namespace {

/// Some bytes can ask for a thousand million signals.
constexpr std::uint64_t kMostSignals = 2000;

/// What came of one preparation.
struct Prepared {
    bool succeeded = false;
    bool hasLosses = false;
    bool hasChanges = false;
    std::string text;
};

/// What the reader says, and nothing if it reads all of it.
std::string refusal(std::string_view text) {
    const auto root = makePh<PhRoot>();
    LimitedConsole console;
    PhA2l reader(console, "ecu.a2l");
    MemoryInputFile input(text);
    return reader.parse(*root, input) == 0 ? std::string() : console.out;
}

Prepared prepared(std::string_view text, bool skipsMissing) {
    bool hasFailed = false;
    preparing::Report report([&hasFailed](const PrepareFinding& finding) {
        require(!hasFailed, "an error is the last finding");
        require(!finding.text.empty() && finding.text.find('\n') == std::string_view::npos,
                "a finding is a line");
        hasFailed = finding.kind == PrepareFinding::Kind::Error;
    });
    report.setReader([text] { return refusal(text).empty(); });
    preparing::SourceFiles files;
    files.mainName = "ecu.a2l";
    files.openMain = [text] { return std::make_unique<MemoryInputFile>(text); };
    preparing::RewriteOptions options;
    options.expansion.limit = kMostSignals;
    options.expansion.skipsMissing = skipsMissing;
    Prepared result;
    preparing::StringOutput output(result.text);
    preparing::LineMap map;
    result.succeeded = preparing::prepareText(files, options, report, output, &map);
    require(result.succeeded == !report.hasErrors() && hasFailed == report.hasErrors(),
            "what fails tells an error");
    result.hasLosses = report.hasLosses();
    result.hasChanges = report.hasChanges();
    return result;
}

/// Directly in a module the reader passes an include over, also one with bytes FF within, which
/// mean nothing.
bool hasAnotherMeaning(std::string text) {
    std::erase(text, '\xFF');
    return text.find("/include") != std::string::npos;
}

void check(std::string_view text, bool skipsMissing) {
    const Prepared first = prepared(text, skipsMissing);
    if (refusal(text).empty() && !hasAnotherMeaning(std::string(text))) {
        require(first.succeeded && !first.hasLosses && first.text == text,
                "what is read already comes back as it is");
    }
    if (!first.succeeded) {
        return;
    }
    require(first.hasLosses || refusal(first.text).find("Unexpected token") == std::string::npos,
            "what is ready has no word that the reader does not take");
    const Prepared second = prepared(first.text, skipsMissing);
    require(second.succeeded && second.text == first.text, "a second time changes nothing");
}

}  // namespace
}  // namespace quillmark

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    for (const bool skipsMissing : {false, true}) {
        quillmark::check(quillmark::textOf(data, size), skipsMissing);
    }
    return 0;
}
