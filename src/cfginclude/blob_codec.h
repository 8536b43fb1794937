#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/output_sink.h"

struct z_stream_s;

namespace quillmark {

// The compressed form of document sections: their text as a zlib stream (RFC 1950), that stream in
// base64 (RFC 4648), those characters in lines of 76 inside a `blobdata` element.
//
// Packing runs through two sinks, so that the plain text is never held:
//
//     std::string text;
//     Base64Sink base64(text, "\r\n");
//     DeflateSink deflate(base64);
//     section.write(deflate, ...);
//     deflate.finish();
//     base64.finish();
//     blob.addIntValue("size", base64.characterCount());

/// Where zlib takes its memory from. Empty: from the heap. Tests let it run out.
struct ZlibMemory {
    /// `count` times `size` bytes, or nullptr.
    void* (*take)(void* context, unsigned count, unsigned size) = nullptr;
    void (*giveBack)(void* context, void* block) = nullptr;
    void* context = nullptr;
};

/// Compresses what is written to it and writes the zlib stream to the next sink, which it does not
/// finish. The stream is the one that compressing everything at once gives, in whatever pieces the
/// bytes came.
class DeflateSink final : public OutputSink {
  public:
    explicit DeflateSink(OutputSink& next, const ZlibMemory& memory = {});
    ~DeflateSink() override;

    /// 0, or the error code of zlib that ended compression, if only for want of memory; `ok` is
    /// false then, too, and the stream is worth nothing.
    [[nodiscard]] int status() const { return status_; }

  protected:
    void drain(std::string_view bytes) override;
    void end() override;

  private:
    void compress(int flush);

    OutputSink& next_;
    std::unique_ptr<z_stream_s> stream_;
    int status_ = 0;
};

/// Appends the base64 form of what is written to it to a string of the caller, which must outlive
/// the sink, with a line break after every 76 characters (also the last ones, unless they end in a
/// padded group). The string is complete after `finish`.
class Base64Sink final : public OutputSink {
  public:
    Base64Sink(std::string& text, std::string_view lineBreak);

    /// Characters made so far with the padding but without line breaks; final after `finish`.
    [[nodiscard]] std::int64_t characterCount() const { return static_cast<std::int64_t>(count_); }

  protected:
    void drain(std::string_view bytes) override;
    void end() override;

  private:
    void encodeGroups(std::string_view bytes);

    std::string& text_;
    std::string lineBreak_;
    std::size_t count_ = 0;
    // Bytes that wait for the rest of their group of three.
    std::array<char, 3> pending_{};
    std::size_t pendingCount_ = 0;
};

// The codec in its plain form: a whole text at once, through the steps that the streams are made
// of. The program itself streams, so only tests call the next four.

/// Appends the zlib stream of `input` to `output`. Returns 0 or the error code of zlib.
int compressBuffer(std::string_view input, std::string& output);

/// Appends what the zlib stream `input` holds to `output`. A damaged or truncated stream, or
/// something else altogether, gives the bytes before the damage and is no error: blobs have always
/// been stored without the padding and so may lack the end of their checksum. Returns 0, or the
/// error code of zlib if it could not start.
int uncompressBuffer(std::string_view input, std::string& output);

/// Replaces `output` by the base64 form of `input`, with `lineBreak` as Base64Sink sets it. Returns
/// the number of characters without line breaks.
std::int64_t base64Encode(std::string_view input, std::string& output, std::string_view lineBreak);

/// Replaces `output` by the decoded bytes and returns their number. Up to three characters behind
/// the last complete group of four are ignored; each "=" among the last two characters of the input
/// takes one byte off the end. Foreign characters are not skipped, they count as value 0.
std::size_t base64Decode(std::string_view input, std::string& output);

/// The six bits of one base64 character, 0 for every other character.
unsigned base64Value(char character);

/// A document around its first blob, as views into the document.
struct BlobDocument {
    std::string_view before;  ///< up to "<blob>", its indentation included
    std::string_view data;    ///< between the two `blobdata` tags
    std::string_view after;   ///< from the line after "</blob>" on
};

/// Takes a document apart. Nothing is returned if the first occurrences of "<blob>", "<blobdata>",
/// "</blobdata>" and "</blob>" do not all exist in this order.
std::optional<BlobDocument> findBlob(std::string_view document);

/// Writes the document with its blob replaced by the text that it holds. The text is inflated piece
/// by piece on its way to the sink. Throws std::bad_alloc when zlib finds no memory: what is
/// missing then is not the blob's fault.
void expandBlob(const BlobDocument& document, OutputSink& output, const ZlibMemory& memory = {});

/// Both steps in one. Returns false, with nothing written, when findBlob finds nothing.
[[nodiscard]] bool expandBlob(std::string_view document, OutputSink& output);

}  // namespace quillmark
