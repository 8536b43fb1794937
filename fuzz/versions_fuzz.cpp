// The selection of the library. The first line of the input is the selection text, the second one a
// range, the rest is the version file.
#include <algorithm>

#include "cfginclude/library_versions.h"
#include "cfginclude/version_file.h"
#include "edges/edges.h"
#include "fuzz/property.h"

namespace quillmark {
namespace {

class LineConsole final : public Console {
  public:
    void print(std::string_view text) override { out += text; }
    void printError(std::string_view line) override { err.append(line) += '\n'; }
    void flush() override {}

    std::string out;
    std::string err;
};

std::string_view takeLine(std::string_view& rest) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    const std::string_view line = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return line;
}

void select(std::string_view selection, const VersionInfo& info) {
    LineConsole console;
    const LibrarySelection result = selectLibrary(selection, info, console);
    require(result.status != SelectionStatus::NoVersionFile, "the version file was read");
    if (result.status == SelectionStatus::Refused) {
        require(!console.err.empty(), "a refusal gets a message");
        return;
    }
    require(!result.compatibleVersions.empty(), "a selection declares its versions");
    const LibraryFeatures& features = result.features;
    require(features.writeJsonSource || !features.writeValueTables, "json comes first");
    require(features.writeValueTables ||
                !(features.writeShiftAttributes || features.includeAsciiCharacteristics),
            "value tables come before shifts and texts");
    require(!selection.empty() || !features.writeJsonSource, "without selection nothing is new");
}

void checkRanges(std::string_view selection, std::string_view range) {
    const RangeResult strict = checkRange(selection, range, RangeMode::Strict);
    const RangeResult lenient = checkRange(selection, range, RangeMode::Lenient);
    require((strict == RangeResult::Unknown) == (lenient == RangeResult::Unknown),
            "whether the library is named does not depend on the mode");
    require((strict == RangeResult::Below) == (lenient == RangeResult::Below),
            "the first bound is the same in both modes");
}

}  // namespace
}  // namespace quillmark

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quillmark;
    std::string_view rest = textOf(data, size);
    const std::string_view selection = takeLine(rest);
    const std::string_view range = takeLine(rest);
    checkRanges(selection, range);
    VersionInfo info;
    if (edges().parseVersionXml(rest, info)) {
        select(selection, info);
    }
    VersionInfo plain;
    require(!parsePlainVersionFile(rest, plain) || plain == info, "who reads it does not matter");
    // Hardly any mutation is well-formed, so the selection gets a file of its own, too.
    info = {};
    info.topVersion = "2023.4.2";
    info.restrictions = {{std::string(range), true, "warning"}};
    select(selection, info);
    return 0;
}
