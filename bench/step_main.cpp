// Single steps over whole files, as the bases that whole runs are compared with:
//
//     quillmark_step read FILE          reads a description into the model and resolves it
//     quillmark_step deflate FILE       compresses the file in memory with zlib, level 6
//     quillmark_step deflate-to FILE OUT    the same, and keeps the stream
//     quillmark_step inflate FILE       inflates such a stream and passes over its text once
//     quillmark_step inflate-to FILE OUT    the same, where the pass is to write the text

#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <zlib.h>

#include "a2l/ph_a2l.h"
#include "a2l/resolution.h"
#include "platform/input_file.h"
#include "platform/output_sink.h"

namespace {

using namespace quillmark;

constexpr int kLevel = 6;

int readModel(const std::string& input, const std::string&) {
    StandardConsole console;
    const auto root = makePh<PhRoot>();
    PhA2l reader(console, input);
    return reader.parse(*root) == 0 ? resolve(*root) : 1;
}

int deflateFile(const std::string& input, const std::string& output) {
    std::string text;
    if (!readWholeFile(input, text)) {
        return 1;
    }
    uLongf size = compressBound(text.size());
    std::vector<Bytef> packed(size);
    if (compress2(packed.data(), &size, reinterpret_cast<const Bytef*>(text.data()), text.size(),
                  kLevel) != Z_OK) {
        return 1;
    }
    if (output.empty()) {
        return 0;
    }
    FileSink sink(output);
    sink.write({reinterpret_cast<const char*>(packed.data()), size});
    sink.finish();
    return sink.ok() ? 0 : 1;
}

/// Stands for a pass over text: no result is of interest, but it must not be optimised away.
std::size_t countLines(const std::vector<Bytef>& text, std::size_t size) {
    std::size_t lines = 0;
    for (std::size_t i = 0; i < size; ++i) {
        lines += text[i] == '\n' ? 1U : 0U;
    }
    return lines;
}

int inflateFile(const std::string& input, const std::string& output) {
    std::string packed;
    z_stream stream{};
    if (!readWholeFile(input, packed) || inflateInit(&stream) != Z_OK) {
        return 1;
    }
    std::optional<FileSink> sink;
    if (!output.empty()) {
        sink.emplace(output);
    }
    std::vector<Bytef> text(OutputSink::kBufferSize);
    stream.next_in = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_in = static_cast<uInt>(packed.size());
    std::size_t lines = 0;
    int status = Z_OK;
    while (status == Z_OK) {
        stream.next_out = text.data();
        stream.avail_out = static_cast<uInt>(text.size());
        status = inflate(&stream, Z_NO_FLUSH);
        const std::size_t size = text.size() - stream.avail_out;
        if (sink) {
            sink->write({reinterpret_cast<const char*>(text.data()), size});
        } else {
            lines += countLines(text, size);
        }
    }
    inflateEnd(&stream);
    std::printf("%zu lines\n", lines);
    return status == Z_STREAM_END ? 0 : 1;
}

struct Step {
    std::string_view name;
    int (*run)(const std::string& input, const std::string& output);
    int files;
};

constexpr Step kSteps[] = {
    {"read", readModel, 1},      {"deflate", deflateFile, 1},    {"deflate-to", deflateFile, 2},
    {"inflate", inflateFile, 1}, {"inflate-to", inflateFile, 2},
};

}  // namespace

int main(int argumentCount, char* arguments[]) {
    constexpr int kFirstFile = 2;
    for (const Step& step : kSteps) {
        if (argumentCount == kFirstFile + step.files && step.name == arguments[1]) {
            return step.run(arguments[kFirstFile],
                            step.files > 1 ? arguments[kFirstFile + 1] : std::string());
        }
    }
    std::fputs("usage: quillmark_step read|deflate|deflate-to|inflate|inflate-to FILE [OUT]\n",
               stderr);
    return 2;
}
