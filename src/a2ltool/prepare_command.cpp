#include "a2ltool/prepare_command.h"

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "a2ltool/tool_status.h"
#include "quillmark/description.h"
#include "quillmark/prepare.h"

namespace quillmark::a2ltool {

namespace {

/// What stands on the command line.
struct PrepareValues {
    std::string input = "-";
    std::string output = "-";
    bool dryRun = false;
    std::vector<std::string> includeDirectories;
    bool skipMissing = false;
    std::string map;
    bool latin1 = false;
    std::string separator = ".";
    bool blobArrays = false;
    std::uint64_t limit = 10'000'000;
    std::string epk;
    std::string epkAddress;
    std::string module;
    bool quiet = false;
};

const char* wordFor(PrepareFinding::Kind kind) {
    switch (kind) {
        case PrepareFinding::Kind::Change:
            return "changed";
        case PrepareFinding::Kind::Loss:
            return "lost";
        case PrepareFinding::Kind::Error:
            break;
    }
    return "error";
}

/// Standard output may be the description, so findings go to standard error.
void tell(const PrepareFinding& finding) {
    std::string line(finding.file);
    if (finding.line > 0) {
        line += ":" + std::to_string(finding.line);
    }
    line.append(": ").append(wordFor(finding.kind)).append(": ").append(finding.text).append("\n");
    std::fputs(line.c_str(), stderr);
}

/// Whether `convert` reads a description as it is.
bool canBeRead(const ByteSource& description) {
    return Description::readStream(description, "").isComplete();
}

PrepareOptions optionsOf(const PrepareValues& values) {
    PrepareOptions options;
    options.setOutput(values.dryRun ? "" : values.output)
        .setIncludeDirectories(values.includeDirectories)
        .setMap(values.dryRun ? "" : values.map)
        .setLatin1(values.latin1)
        .setSeparator(values.separator)
        .setBlobArrays(values.blobArrays)
        .setSkipMissing(values.skipMissing)
        .setLimit(values.limit)
        .setEpk(values.epk, values.epkAddress, values.module)
        .setReader(canBeRead);
    return options;
}

ToolStatus runPrepare(const PrepareValues& values) {
    const PrepareResult result =
        prepare(values.input, optionsOf(values), [&values](const PrepareFinding& finding) {
            if (!values.quiet || finding.kind != PrepareFinding::Kind::Change) {
                tell(finding);
            }
        });
    return static_cast<ToolStatus>(result);
}

/// An address as descriptions write it. The text says what is wrong with it, or nothing.
std::string checkAddress(const std::string& text) {
    const bool isHexadecimal = text.size() > 2 && text[0] == '0' && (text[1] | 0x20) == 'x';
    const std::string digits = text.substr(isHexadecimal ? 2 : 0);
    const char* const allowed = isHexadecimal ? "0123456789abcdefABCDEF" : "0123456789";
    const bool isNumber = !digits.empty() && digits.find_first_not_of(allowed) == std::string::npos;
    return isNumber ? "" : "'" + text + "' is no address";
}

/// What a separator leaves of two names has to be one name.
std::string checkSeparator(const std::string& text) {
    static constexpr const char* kAllowed =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_.-|";
    const bool isPartOfName =
        !text.empty() && text.find_first_not_of(kAllowed) == std::string::npos;
    return isPartOfName ? "" : "'" + text + "' cannot stand in a name";
}

}  // namespace

CommandRun declarePrepare(CommandOptions& options) {
    const auto values = std::make_shared<PrepareValues>();
    options.addOperand({"input", "IN", "the description, - for standard input"}, values->input);
    options.addOption({"-o,--output", "FILE", "where to write, - for standard output"},
                      values->output);
    options.addFlag("--dry-run", values->dryRun, "write nothing, only tell");
    options.addOption(
        {"--include-dir", "DIR", "look for included files there too (may be repeated)"},
        values->includeDirectories);
    options.addFlag("--skip-missing", values->skipMissing,
                    "leave out what includes or types are missing for");
    options.addOption({"--map", "FILE", "write which line comes from where"}, values->map);
    options.addFlag("--latin1", values->latin1, "write texts as ISO 8859-1");
    options.addOption({"--separator", "TEXT", "between instance and component (default: .)"},
                      values->separator, checkSeparator);
    options.addFlag("--blob-arrays", values->blobArrays, "write a BLOB as an array of UBYTE");
    options.addOption(
        {"--limit", "N", "most signals that instances may become (default: 10000000)"},
        values->limit);
    options.addOption({"--epk", "TEXT", "the EPK of a module that lacks it"}, values->epk);
    options.addOption({"--epk-address", "ADDRESS", "the address of the EPK"}, values->epkAddress,
                      checkAddress);
    options.addOption({"--module", "NAME", "the module that gets the EPK"}, values->module);
    options.addFlag("-q,--quiet", values->quiet, "tell only losses and errors");
    return [values] { return runPrepare(*values); };
}

}  // namespace quillmark::a2ltool
