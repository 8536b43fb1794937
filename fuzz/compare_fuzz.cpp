// The comparison. A byte 0x1E parts the input into two descriptions; without one, its middle does.
#include <set>

#include "a2l/ph_a2l.h"
#include "a2l/resolution.h"
#include "compare/compare_driver.h"
#include "fuzz/property.h"
#include "platform/input_file.h"

namespace quillmark {
namespace {

constexpr char kSeparator = '\x1E';

/// Lines of values can have any length.
class CountingConsole final : public Console {
  public:
    void print(std::string_view text) override { bytes += text.size(); }
    void printError(std::string_view) override { require(false, "nothing is an error"); }
    void flush() override {}

    std::size_t bytes = 0;
};

PhHandle<PhRoot> read(std::string_view text) {
    auto root = makePh<PhRoot>();
    LimitedConsole console;
    PhA2l reader(console, "ecu.a2l");
    MemoryInputFile input(text);
    if (reader.parse(*root, input) != 0) {
        return {};
    }
    resolve(*root);
    return root;
}

struct Comparison {
    int status = 0;
    CompareReport report;
};

Comparison compare(const PhRoot& oldRoot, const PhRoot& newRoot) {
    Comparison result;
    CountingConsole console;
    result.status =
        compareDescriptions(result.report, true, "old.a2l", oldRoot, "new.a2l", newRoot, console);
    for (const CompareFinding& finding : result.report) {
        require(finding.level >= kLevelCannotCompare && finding.level <= kLevelWarning,
                "a finding has a level");
        require(!finding.message.empty(), "a finding has a text");
    }
    require(result.status == 0 || !result.report.empty(), "a refusal is a finding");
    return result;
}

template <typename T>
bool hasTwins(const PhObjectList<T>& items, PhHandle<PhValue> T::*number) {
    std::set<std::int64_t> numbers;
    for (const T& item : items) {
        const PhHandle<PhValue>& value = item.*number;
        if (!numbers.insert(value ? value->toInteger() : 0).second) {
            return true;
        }
    }
    return false;
}

/// Whether a list, raster or event has the number of an earlier one: it is compared with that one
/// then, and may differ from it.
bool hasTwins(const PhRoot& root) {
    for (const PhGroup& project : root.documents) {
        for (const PhGroup& module : project.documents) {
            for (const PhCommParam& parameters : module.commParams) {
                const PhDaqCapabilities* daq = parameters.stationParam->daqCapabilitiesIfAny();
                const PhDaqTpCapabilities* tp = parameters.stationParam->daqTpCapabilitiesIfAny();
                if ((daq != nullptr && (hasTwins(daq->rasters, &PhRaster::channel) ||
                                        hasTwins(daq->daqLists, &PhDaq::number))) ||
                    (tp != nullptr && hasTwins(tp->daqLists, &PhDaqTpCan::number))) {
                    return true;
                }
            }
        }
    }
    return false;
}

void compareWithItself(const PhRoot& root) {
    const Comparison result = compare(root, root);
    require(result.status != 0 || result.report.empty() || hasTwins(root),
            "nothing differs from itself");
}

}  // namespace
}  // namespace quillmark

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quillmark;
    const std::string_view text = textOf(data, size);
    const std::size_t separator = text.find(kSeparator);
    const bool parted = separator != std::string_view::npos;
    const PhHandle<PhRoot> oldRoot = read(text.substr(0, parted ? separator : size / 2));
    const PhHandle<PhRoot> newRoot = read(text.substr(parted ? separator + 1 : size / 2));
    for (const PhHandle<PhRoot>& root : {oldRoot, newRoot}) {
        if (root) {
            compareWithItself(*root);
        }
    }
    if (oldRoot && newRoot) {
        const Comparison there = compare(*oldRoot, *newRoot);
        const Comparison back = compare(*newRoot, *oldRoot);
        require((there.status == 0) == (back.status == 0), "both ways can be compared, or none");
    }
    return 0;
}
