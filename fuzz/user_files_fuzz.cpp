// The list of user files, as a text and as the value of its option, and the names that depend on
// it.
#include <algorithm>
#include <array>

#include "app/convert_command.h"
#include "app/convert_options.h"
#include "fuzz/property.h"
#include "package/error_texts.h"

namespace quillmark {
namespace {

class SilentConsole final : public Console {
  public:
    void print(std::string_view text) override { bytes += text.size(); }
    void printError(std::string_view) override { require(false, "nothing is an error"); }
    void flush() override {}

    std::size_t bytes = 0;
};

std::string joined(const std::vector<std::string>& items) {
    std::string list;
    for (const std::string& item : items) {
        list.append(item) += ',';
    }
    return list;
}

void split(std::string_view list) {
    const std::vector<std::string> items = splitUserFiles(list);
    std::string ended(list);
    if (!list.empty() && list.back() != ',') {
        ended += ',';
    }
    require(joined(items) == ended, "items and commas are the list");
    for (const std::string& item : items) {
        require(item.find(',') == std::string::npos, "an item has no comma");
        const std::string text = filledText(errorText(kUserFileMissing), {item});
        require(text.find(item) != std::string::npos, "the message names the item");
    }
}

void parseOptions(const std::string& list, const std::string& output) {
    const std::array<const char*, 5> arguments = {"in.a2l", output.c_str(), "-userfiles",
                                                  list.c_str(), "-z"};
    ConvertRequest request;
    SilentConsole console;
    const bool accepted = parseConvertOptions(arguments, request, console);
    require(accepted || console.bytes > 0, "a mistake gets a message");
    if (accepted) {
        // Arguments end at a NUL.
        require(request.userFiles == splitUserFiles(list.c_str()), "the option is the list");
        require(request.userFiles.empty() || !request.zpkiFile.empty(),
                "user files go into a package");
    }
}

}  // namespace
}  // namespace quillmark

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quillmark;
    const std::string list(textOf(data, size));
    split(list);
    parseOptions(list, "out.cfginclude");
    // The list once more as a name, of which it may be a strange one; behind a directory no option.
    parseOptions("a,b", "d/" + list);
    const std::string package = zpkiNameFor(list);
    require(package.empty() || package.ends_with(".zpki"), "a package has its suffix");
    return 0;
}
