// The blob codec. The input is read as a compressed document, and then compressed itself.
#include "cfginclude/blob_codec.h"
#include "fuzz/property.h"

namespace quillmark {
namespace {

void expand(std::string_view document) {
    std::string text;
    StringSink sink(text);
    const bool found = expandBlob(document, sink);
    sink.finish();
    require(found == findBlob(document).has_value(), "a blob is expanded if there is one");
    require(found || text.empty(), "without a blob nothing is written");
    if (!found) {
        return;
    }
    const BlobDocument parts = *findBlob(document);
    require(text.starts_with(parts.before) && text.ends_with(parts.after),
            "what surrounds the blob stays");

    // The same, step by step.
    std::string letters;
    for (const char c : parts.data) {
        if (base64Value(c) != 0 || c == 'A') {
            letters += c;
        }
    }
    std::string stream;
    base64Decode(letters, stream);
    std::string content(parts.before);
    uncompressBuffer(stream, content);
    content += parts.after;
    require(content == text, "expanding is decoding and inflating");
}

void compressAndExpand(std::string_view content) {
    std::string stream;
    require(compressBuffer(content, stream) == 0, "every content can be compressed");
    std::string inflated;
    require(uncompressBuffer(stream, inflated) == 0 && inflated == content,
            "inflating gives what was deflated");

    std::string plain;
    const std::int64_t count = base64Encode(stream, plain, "");
    require(count == static_cast<std::int64_t>(plain.size()), "characters are counted");
    std::string decoded;
    require(base64Decode(plain, decoded) == stream.size() && decoded == stream,
            "decoding gives what was encoded");

    std::string lines;
    require(base64Encode(stream, lines, "\r\n") == count, "line breaks are not counted");
    std::string document = "before\r\n  <blob>\r\n<blobdata>\r\n";
    document.append(lines).append("\r\n</blobdata>\r\n</blob>\r\nafter");
    std::string text;
    StringSink sink(text);
    require(expandBlob(document, sink), "a blob is found");
    sink.finish();
    require(text == "before\r\n  " + std::string(content) + "after",
            "expanding gives what was compressed");
}

}  // namespace
}  // namespace quillmark

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input = quillmark::textOf(data, size);
    quillmark::expand(input);
    quillmark::compressAndExpand(input);
    // Nearly no mutation leaves a base64 text whole that a checksum guards, so the bytes are tried
    // as a stream of their own, too.
    std::string ignored;
    quillmark::uncompressBuffer(input, ignored);
    quillmark::base64Decode(input, ignored);
    return 0;
}
