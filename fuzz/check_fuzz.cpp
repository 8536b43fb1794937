// What quillmark-a2l tells about a description: with all errors that can be found, in every format,
// and all that is in it as JSON.
#include <cstddef>
#include <limits>
#include <string>

#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include "a2ltool/description_check.h"
#include "a2ltool/description_json.h"
#include "a2ltool/report_formats.h"
#include "a2ltool/source_lines.h"
#include "fuzz/property.h"
#include "platform/input_file.h"
#include "quillmark/diff.h"

namespace quillmark::a2ltool {
namespace {

const std::string kName = "ecu.a2l";

FileReport check(std::string_view text, std::size_t errorLimit) {
    const auto description =
        Description::readMemory(text, kName, ReadOptions().setErrorLimit(errorLimit));
    FileReport report = checkDescription(description, kName, Severity::Warning);
    MemoryInputFile input(text);
    fetchSourceLines(input, report.findings);
    return report;
}

bool isJson(const std::string& text) {
    rapidjson::MemoryStream stream(text.data(), text.size());
    rapidjson::BaseReaderHandler<> handler;
    rapidjson::Reader reader;
    constexpr unsigned kFlags =
        rapidjson::kParseValidateEncodingFlag | rapidjson::kParseIterativeFlag;
    return !reader.Parse<kFlags>(stream, handler).IsError();
}

void tellInEveryFormat(const FileReport& report) {
    for (const ReportFormatRow& row : reportFormats()) {
        std::string text;
        StringSink sink(text);
        const auto format = row.make(sink, false);
        format->tell(report);
        format->end();
        sink.finish();
        const std::string_view word = row.word;
        require((word != "json" && word != "sarif") || isJson(text), "JSON is well-formed");
    }
}

/// Reading goes on only behind an error, and so finds the same up to the first one.
void compareReports(const FileReport& first, const FileReport& all) {
    require(first.convertible == all.convertible,
            "going on behind errors makes nothing convertible");
    require(first.findings.size() <= all.findings.size(), "more reading finds no less");
    for (std::size_t i = 0; i < first.findings.size(); ++i) {
        const ReportedFinding& a = first.findings[i];
        const ReportedFinding& b = all.findings[i];
        require(a.severity == b.severity && a.line == b.line && a.column == b.column &&
                    a.text == b.text,
                "what is found up to the first error stays the same");
    }
    require(!all.findings.empty() || all.convertible, "what does not convert has a finding");
}

void describe(const Description& description) {
    for (const auto form : {DescriptionJson::Form::Document, DescriptionJson::Form::Lines}) {
        std::string text;
        StringSink sink(text);
        DescriptionJson(sink, form, std::vector<bool>(jsonSections().size(), true))
            .write(description);
        sink.finish();
        require(form == DescriptionJson::Form::Lines || isJson(text), "JSON is well-formed");
    }
    const DiffResult differences = diff(description, description);
    for (const ModelDifference& difference : differences.differences()) {
        // What `compare` says is its own matter.
        require(difference.object() == DiffObject::Setting,
                "a description does not differ from itself");
    }
}

}  // namespace
}  // namespace quillmark::a2ltool

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quillmark;
    using namespace quillmark::a2ltool;
    const std::string_view text = quillmark::textOf(data, size);
    const FileReport first = check(text, 1);
    const FileReport all = check(text, std::numeric_limits<std::size_t>::max());
    compareReports(first, all);
    tellInEveryFormat(first);
    tellInEveryFormat(all);
    const auto description = Description::readMemory(text, kName);
    if (description.isComplete()) {
        describe(description);
    }
    return 0;
}
