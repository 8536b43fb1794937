// The whole conversion in memory: description, model, include document, its plain, its indented and
// its compressed text.

#include "a2l/ph_a2l.h"
#include "a2l/resolution.h"
#include "cfginclude/blob_codec.h"
#include "cfginclude/include_document.h"
#include "fuzz/property.h"
#include "platform/input_file.h"

namespace quillmark {
namespace {

/// Arrays with more elements are not written: a few bytes can ask for billions of them.
constexpr double kMaxElements = 2000;

/// What the oldest and the newest libraries are given.
constexpr LibraryFeatures kFeatures[] = {{false, false, false, false}, {true, true, true, true}};

bool isSmall(const PhRoot& root) {
    double elements = 0;
    for (const PhGroup& project : root.documents) {
        for (const PhGroup& module : project.documents) {
            for (const PhEntity& signal : module.signals) {
                double size = 1;
                for (const int dimension : signal.matrixDims()) {
                    size *= dimension == 0 ? 1 : dimension;
                }
                elements += size;
            }
        }
    }
    return elements <= kMaxElements;
}

bool read(std::string_view text, PhRoot& root) {
    LimitedConsole console;
    PhA2l reader(console, "ecu.a2l");
    MemoryInputFile input(text);
    if (reader.parse(root, input) != 0) {
        return false;
    }
    resolve(root);
    return true;
}

enum class Form { Plain, Compressed, Indented };

/// Empty if there is no document.
std::string written(const PhRoot& root, Form form, const LibraryFeatures& features) {
    ConvertRequest request;
    request.inputFile = "ecu.a2l";
    request.namePrefix = "prefix.of.every.name.";
    request.compress = form == Form::Compressed;
    request.indent = form == Form::Indented;
    const LibrarySelection library{SelectionStatus::Ok, features, "sigTrak+1.4.4-"};
    LimitedConsole console;
    IncludeDocument document;
    const DocumentStatus status =
        buildIncludeDocument(request, root, {{0, "now"}, "user"}, library, document, console);
    require(status != DocumentStatus::Refused, "a library that was selected is not refused");
    require((status == DocumentStatus::Built) == (document.root != nullptr),
            "a built document has a root");
    std::string text;
    if (document.root == nullptr) {
        require(console.out.ends_with("No output file generated.\n"),
                "a missing document gets a message");
        return text;
    }
    StringSink sink(text);
    document.root->write(sink, request.indent, 0);
    sink.finish();
    return text;
}

bool contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

std::string expanded(std::string document) {
    for (;;) {
        std::string text;
        StringSink sink(text);
        if (!expandBlob(document, sink)) {
            return document;
        }
        sink.finish();
        document = std::move(text);
    }
}

void convert(const PhRoot& root, const LibraryFeatures& features) {
    const std::string plain = written(root, Form::Plain, features);
    const std::string compressed = written(root, Form::Compressed, features);
    // A text of the description that reads like a blob would be taken for one.
    if (!contains(plain, "<blob") && !contains(plain, "</blob")) {
        require(expanded(compressed) == plain, "plain and compressed document agree");
    }
    const std::string indented = written(root, Form::Indented, features);
    require(indented.empty() == plain.empty() && indented.size() >= plain.size(),
            "indentation adds blanks");
}

}  // namespace
}  // namespace quillmark

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quillmark;
    const auto root = makePh<PhRoot>();
    if (read(textOf(data, size), *root) && isSmall(*root)) {
        for (const LibraryFeatures& features : kFeatures) {
            convert(*root, features);
        }
    }
    return 0;
}
