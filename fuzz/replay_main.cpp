// Runs a target on files instead of new inputs: every file of the directories that are given, in
// the order of their names. Where libFuzzer is not linked, this is the main of the target.
#include <algorithm>
#include <filesystem>
#include <vector>

#include "fuzz/property.h"
#include "platform/input_file.h"

namespace {

namespace fs = std::filesystem;

std::vector<std::string> filesOf(const std::string& directory) {
    std::vector<std::string> names;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(directory, error)) {
        if (entry.is_regular_file()) {
            names.push_back(entry.path().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

bool replay(const std::string& name) {
    std::string bytes;
    if (!quillmark::readWholeFile(name, bytes)) {
        std::fprintf(stderr, "Cannot read %s\n", name.c_str());
        return false;
    }
    std::printf("%s\n", name.c_str());
    std::fflush(stdout);  // the last line names the culprit
    // A copy of the exact size shows the sanitizers where it ends.
    const std::vector<std::uint8_t> data(bytes.begin(), bytes.end());
    LLVMFuzzerTestOneInput(data.data(), data.size());
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    std::size_t count = 0;
    for (int i = 1; i < argc; ++i) {
        for (const std::string& name : filesOf(argv[i])) {
            if (!replay(name)) {
                return EXIT_FAILURE;
            }
            ++count;
        }
    }
    std::printf("%zu inputs\n", count);
    return count > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
