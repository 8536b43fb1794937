#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "prepare/prepare.h"

namespace quillmark::preparing {

/// What came of a description that was prepared in memory.
struct Prepared {
    bool isGood = false;
    std::string text;
    std::string findings;  ///< one a line: line, kind, text
    std::string map;
};

/// Prepares a text that lies in memory; files that it includes are looked for in `directory`.
/// `chunk` is the largest piece in which it is read, 0 for any.
inline Prepared prepareInMemory(std::string_view text, const RewriteOptions& options = {},
                                const std::string& directory = {}, std::size_t chunk = 0) {
    Prepared result;
    Report report([&result](const PrepareFinding& finding) {
        static constexpr std::string_view kKinds[] = {"changed", "lost", "error"};
        result.findings += std::to_string(finding.line) + " " +
                           std::string(kKinds[static_cast<std::size_t>(finding.kind)]) + ": " +
                           std::string(finding.text) + "\n";
    });
    const SourceFiles files{
        directory.empty() ? "in.a2l" : directory + "/in.a2l",
        [text, chunk] { return std::make_unique<MemoryInputFile>(text, chunk); },
        {}};
    StringOutput output(result.text);
    LineMap map;
    result.isGood = prepareText(files, options, report, output, &map);
    result.map = map.text(report);
    return result;
}

/// A description with one module that holds this.
inline std::string moduleOf(std::string_view content) {
    return "ASAP2_VERSION 1 71\n/begin PROJECT P \"\"\n/begin MODULE M \"\"\n" +
           std::string(content) + "\n/end MODULE\n/end PROJECT\n";
}

/// What is left of such a module.
inline std::string contentOf(const Prepared& prepared) {
    constexpr std::string_view kBefore = "/begin MODULE M \"\"\n";
    constexpr std::string_view kAfter = "\n/end MODULE\n";
    const std::size_t from = prepared.text.find(kBefore);
    const std::size_t to = prepared.text.rfind(kAfter);
    return from == std::string::npos || to == std::string::npos
               ? prepared.text
               : prepared.text.substr(from + kBefore.size(), to - from - kBefore.size());
}

}  // namespace quillmark::preparing
