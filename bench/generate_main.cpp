// Writes a generated description:  quillmark_generate --mix NAME --size-mb N --out FILE
// A size may have a fraction ("0.09"); a megabyte has a million bytes. --mixes lists the mixes.

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <span>
#include <string>
#include <string_view>

#include "bench/generate.h"

namespace {

constexpr double kMegabyte = 1e6;

struct Options {
    std::string mix = "realistic";
    double sizeMb = 1;
    std::string out;
};

bool readOptions(std::span<char*> arguments, Options& options) {
    if (arguments.size() % 2 != 0) {
        return false;
    }
    for (std::size_t i = 0; i < arguments.size(); i += 2) {
        const std::string_view name = arguments[i];
        const std::string_view value = arguments[i + 1];
        if (name == "--mix") {
            options.mix = value;
        } else if (name == "--out") {
            options.out = value;
        } else if (name == "--size-mb") {
            const auto end = value.data() + value.size();
            if (std::from_chars(value.data(), end, options.sizeMb).ptr != end) {
                return false;
            }
        } else {
            return false;
        }
    }
    return !options.out.empty() && options.sizeMb > 0;
}

int listMixes() {
    for (const std::string_view name : quillmark::bench::mixNames()) {
        std::printf("%s\n", std::string(name).c_str());
    }
    return 0;
}

}  // namespace

int main(int argumentCount, char* argumentVector[]) {
    const std::span<char*> arguments(argumentVector, static_cast<std::size_t>(argumentCount));
    if (arguments.size() == 2 && std::string_view(arguments[1]) == "--mixes") {
        return listMixes();
    }
    Options options;
    if (!readOptions(arguments.subspan(1), options)) {
        std::fputs("usage: quillmark_generate --mix NAME --size-mb N --out FILE | --mixes\n",
                   stderr);
        return 1;
    }
    quillmark::FileSink sink(options.out);
    if (!quillmark::bench::generateDescription(
            options.mix, static_cast<std::uint64_t>(options.sizeMb * kMegabyte), sink)) {
        std::fputs("unknown mix\n", stderr);
        return 1;
    }
    sink.finish();
    return sink.ok() ? 0 : 1;
}
