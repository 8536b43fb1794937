#include "cfginclude/blob_codec.h"

#include <algorithm>
#include <new>
#include <vector>

#include <zlib.h>

namespace quillmark {

namespace {

constexpr const char* kZlibVersion = "1.2.8";
constexpr int kDefaultLevel = -1;
constexpr std::size_t kDeflateStep = std::size_t{16} * 1024;
// Each step costs inflating a copy of its window of 32 KiB, so that they should be few.
constexpr std::size_t kInflateStep = std::size_t{256} * 1024;

// zlib counts its input in 32 bits. A multiple of 64 KiB, see OutputSink::kBufferSize.
constexpr std::size_t kLongestPiece = std::size_t{1} << 30U;

constexpr std::string_view kAlphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::size_t kLineLength = 76;
constexpr std::size_t kGroupBytes = 3;
constexpr std::size_t kGroupCharacters = 4;

constexpr std::uint8_t kForeign = 0xFF;

/// The value of each base64 character, kForeign for the others.
constexpr std::array<std::uint8_t, 256> characterValues() {
    std::array<std::uint8_t, 256> values{};
    values.fill(kForeign);
    for (std::size_t i = 0; i < kAlphabet.size(); ++i) {
        values[static_cast<unsigned char>(kAlphabet[i])] = static_cast<std::uint8_t>(i);
    }
    return values;
}

constexpr std::array<std::uint8_t, 256> kValues = characterValues();

std::uint8_t rawValue(char character) {
    return kValues[static_cast<unsigned char>(character)];
}

// zlib promises not to write through this pointer.
Bytef* inputOf(std::string_view bytes) {
    return reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
}

void useMemory(z_stream& stream, const ZlibMemory& memory) {
    stream.zalloc = memory.take;
    stream.zfree = memory.giveBack;
    stream.opaque = memory.context;
}

char* encodeGroup(const char* in, char* out) {
    const auto byte = [in](std::size_t i) {
        return static_cast<std::uint32_t>(static_cast<unsigned char>(in[i]));
    };
    const std::uint32_t bits = byte(0) << 16U | byte(1) << 8U | byte(2);
    *out++ = kAlphabet[bits >> 18U];
    *out++ = kAlphabet[bits >> 12U & 0x3FU];
    *out++ = kAlphabet[bits >> 6U & 0x3FU];
    *out++ = kAlphabet[bits & 0x3FU];
    return out;
}

char* decodeGroup(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d, char* out) {
    const std::uint32_t bits = a << 18U | b << 12U | c << 6U | d;
    *out++ = static_cast<char>(bits >> 16U);
    *out++ = static_cast<char>(bits >> 8U);
    *out++ = static_cast<char>(bits);
    return out;
}

/// A zlib stream on its way to the sink that wants the plain text. Whatever is wrong with it ends
/// it quietly.
class Inflater {
  public:
    explicit Inflater(OutputSink& output, const ZlibMemory& memory = {}) : output_(output) {
        useMemory(stream_, memory);
        status_ = inflateInit_(&stream_, kZlibVersion, static_cast<int>(sizeof stream_));
        open_ = status_ == Z_OK;
        if (open_) {
            // The checksum of a blob may be cut off, and a wrong one changes nothing any more: by
            // then the text has been handed on. Not computing it saves a sixth of the time.
            inflateValidate(&stream_, 0);
        }
        ranOutOfMemory_ = status_ == Z_MEM_ERROR;
    }
    Inflater(const Inflater&) = delete;
    Inflater& operator=(const Inflater&) = delete;
    ~Inflater() {
        if (status_ != Z_OK) {
            return;
        }
        inflateEnd(&stream_);
    }

    // 0, or why zlib could not start.
    [[nodiscard]] int status() const { return status_; }

    // False once no further input can give any more text.
    [[nodiscard]] bool isOpen() const { return open_; }

    // True if what is missing is not missing in the stream.
    [[nodiscard]] bool ranOutOfMemory() const { return ranOutOfMemory_; }

    void feed(std::string_view bytes) {
        while (open_ && !bytes.empty()) {
            const std::string_view piece = bytes.substr(0, kLongestPiece);
            stream_.next_in = inputOf(piece);
            stream_.avail_in = static_cast<uInt>(piece.size());
            inflatePiece();
            bytes.remove_prefix(piece.size());
        }
    }

  private:
    void inflatePiece() {
        do {
            stream_.next_out = reinterpret_cast<Bytef*>(work_.data());
            stream_.avail_out = static_cast<uInt>(work_.size());
            // "No progress" only says that the piece is used up.
            const int result = inflate(&stream_, Z_NO_FLUSH);
            open_ = result == Z_OK || result == Z_BUF_ERROR;
            ranOutOfMemory_ = result == Z_MEM_ERROR;
            output_.write({work_.data(), work_.size() - stream_.avail_out});
        } while (open_ && stream_.avail_out == 0);
    }

    OutputSink& output_;
    z_stream stream_{};
    int status_ = Z_OK;
    bool open_ = false;
    bool ranOutOfMemory_ = false;
    std::vector<char> work_ = std::vector<char>(kInflateStep);
};

/// Takes the next four base64 characters among those from `at` on, and moves `at` behind them.
/// False when there are no four left.
bool takeGroup(const char*& at, const char* end,
               std::array<std::uint32_t, kGroupCharacters>& group) {
    // Nearly always they stand together.
    if (static_cast<std::size_t>(end - at) >= kGroupCharacters) {
        std::transform(at, at + kGroupCharacters, group.begin(), rawValue);
        if ((group[0] | group[1] | group[2] | group[3]) < kAlphabet.size()) {
            at += kGroupCharacters;
            return true;
        }
    }
    std::size_t filled = 0;
    for (; at != end && filled < kGroupCharacters; ++at) {
        group[filled] = rawValue(*at);
        filled += group[filled] == kForeign ? 0U : 1U;
    }
    return filled == kGroupCharacters;
}

/// Decodes the base64 characters among `data` in groups of four and feeds the bytes, a work buffer
/// at a time. An incomplete last group is dropped: with the padding filtered out like everything
/// else, that loses at most the last two bytes of the stream's checksum.
void decodeInto(std::string_view data, Inflater& inflater) {
    std::vector<char> bytes(kInflateStep / kGroupBytes * kGroupBytes);
    std::array<std::uint32_t, kGroupCharacters> group{};
    const char* at = data.data();
    const char* const end = at + data.size();
    bool more = true;
    while (more && inflater.isOpen()) {
        char* out = bytes.data();
        char* const full = out + bytes.size();
        while (out != full && (more = takeGroup(at, end, group))) {
            out = decodeGroup(group[0], group[1], group[2], group[3], out);
        }
        inflater.feed({bytes.data(), static_cast<std::size_t>(out - bytes.data())});
    }
}

}  // namespace

DeflateSink::DeflateSink(OutputSink& next, const ZlibMemory& memory)
    : next_(next), stream_(std::make_unique<z_stream_s>()) {
    useMemory(*stream_, memory);
    status_ = deflateInit_(stream_.get(), kDefaultLevel, kZlibVersion,
                           static_cast<int>(sizeof(z_stream_s)));
    if (status_ != Z_OK) {
        fail();
    }
}

DeflateSink::~DeflateSink() {
    // Does nothing, and says so in a result that does not matter, if there was no start or it has
    // been ended.
    deflateEnd(stream_.get());
}

void DeflateSink::drain(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::string_view piece = bytes.substr(0, kLongestPiece);
        stream_->next_in = inputOf(piece);
        stream_->avail_in = static_cast<uInt>(piece.size());
        compress(Z_NO_FLUSH);
        bytes.remove_prefix(piece.size());
    }
}

void DeflateSink::end() {
    compress(Z_FINISH);
}

void DeflateSink::compress(int flush) {
    std::array<char, kDeflateStep> work;
    do {
        if (status_ != Z_OK) {
            return;
        }
        stream_->next_out = reinterpret_cast<Bytef*>(work.data());
        stream_->avail_out = static_cast<uInt>(work.size());
        if (deflate(stream_.get(), flush) == Z_STREAM_ERROR) {
            status_ = Z_STREAM_ERROR;
            fail();
            return;
        }
        next_.write({work.data(), work.size() - stream_->avail_out});
    } while (stream_->avail_out == 0);
}

Base64Sink::Base64Sink(std::string& text, std::string_view lineBreak)
    : text_(text), lineBreak_(lineBreak) {}

void Base64Sink::drain(std::string_view bytes) {
    if (pendingCount_ > 0) {
        const std::size_t taken =
            bytes.copy(pending_.data() + pendingCount_, kGroupBytes - pendingCount_);
        bytes.remove_prefix(taken);
        pendingCount_ += taken;
        if (pendingCount_ < kGroupBytes) {
            return;
        }
        encodeGroups({pending_.data(), kGroupBytes});
    }
    const std::size_t whole = bytes.size() - bytes.size() % kGroupBytes;
    encodeGroups(bytes.substr(0, whole));
    pendingCount_ = bytes.substr(whole).copy(pending_.data(), kGroupBytes);
}

void Base64Sink::end() {
    if (pendingCount_ == 0) {
        return;
    }
    std::fill(pending_.begin() + static_cast<std::ptrdiff_t>(pendingCount_), pending_.end(), '\0');
    std::array<char, kGroupCharacters> group;
    encodeGroup(pending_.data(), group.data());
    std::fill(group.begin() + static_cast<std::ptrdiff_t>(pendingCount_) + 1, group.end(), '=');
    text_.append(group.data(), group.size());
    count_ += group.size();
    pendingCount_ = 0;
}

/// Encodes a multiple of three bytes.
void Base64Sink::encodeGroups(std::string_view bytes) {
    const std::size_t groups = bytes.size() / kGroupBytes;
    const std::size_t characters = groups * kGroupCharacters;
    const std::size_t breaks = (count_ % kLineLength + characters) / kLineLength;
    const std::size_t used = text_.size();
    text_.resize(used + characters + breaks * lineBreak_.size());

    char* out = text_.data() + used;
    const char* in = bytes.data();
    const char* const end = in + bytes.size();
    while (in != end) {
        const std::size_t toLineEnd = (kLineLength - count_ % kLineLength) / kGroupCharacters;
        const std::size_t left = static_cast<std::size_t>(end - in) / kGroupBytes;
        const std::size_t run = std::min(toLineEnd, left);
        for (std::size_t i = 0; i < run; ++i) {
            out = encodeGroup(in, out);
            in += kGroupBytes;
        }
        count_ += run * kGroupCharacters;
        if (run == toLineEnd) {
            out += lineBreak_.copy(out, lineBreak_.size());
        }
    }
}

int compressBuffer(std::string_view input, std::string& output) {
    StringSink bytes(output);
    DeflateSink deflater(bytes);
    deflater.write(input);
    deflater.finish();
    bytes.finish();
    return deflater.status();
}

int uncompressBuffer(std::string_view input, std::string& output) {
    StringSink bytes(output);
    Inflater inflater(bytes);
    inflater.feed(input);
    bytes.finish();
    return inflater.status();
}

std::int64_t base64Encode(std::string_view input, std::string& output, std::string_view lineBreak) {
    output.clear();
    Base64Sink sink(output, lineBreak);
    sink.write(input);
    sink.finish();
    return sink.characterCount();
}

std::size_t base64Decode(std::string_view input, std::string& output) {
    const std::size_t groups = input.size() / kGroupCharacters;
    output.resize(groups * kGroupBytes);
    char* out = output.data();
    for (std::size_t i = 0; i < groups; ++i) {
        const char* const in = input.data() + i * kGroupCharacters;
        out = decodeGroup(base64Value(in[0]), base64Value(in[1]), base64Value(in[2]),
                          base64Value(in[3]), out);
    }

    for (std::size_t fromEnd = 1; fromEnd <= 2; ++fromEnd) {
        if (input.size() < fromEnd || input[input.size() - fromEnd] != '=') {
            break;
        }
        if (!output.empty()) {
            output.pop_back();
        }
    }
    return output.size();
}

unsigned base64Value(char character) {
    const std::uint8_t value = rawValue(character);
    return value == kForeign ? 0U : value;
}

std::optional<BlobDocument> findBlob(std::string_view document) {
    // In the order in which they have to stand.
    static constexpr std::array<std::string_view, 4> kTags = {"<blob>", "<blobdata>", "</blobdata>",
                                                              "</blob>"};
    std::array<std::size_t, kTags.size()> at{};
    for (std::size_t i = 0; i < kTags.size(); ++i) {
        at[i] = document.find(kTags[i]);
        if (at[i] == std::string_view::npos || (i > 0 && at[i] < at[i - 1])) {
            return std::nullopt;
        }
    }

    const std::size_t dataBegin = at[1] + kTags[1].size();
    // The line break behind the blob goes with it, for the text inside brings its own.
    const std::size_t after = document.find_first_not_of("\r\n", at[3] + kTags[3].size());
    return BlobDocument{document.substr(0, at[0]), document.substr(dataBegin, at[2] - dataBegin),
                        document.substr(std::min(after, document.size()))};
}

void expandBlob(const BlobDocument& document, OutputSink& output, const ZlibMemory& memory) {
    output.write(document.before);
    Inflater inflater(output, memory);
    decodeInto(document.data, inflater);
    if (inflater.ranOutOfMemory()) {
        throw std::bad_alloc();
    }
    output.write(document.after);
}

bool expandBlob(std::string_view document, OutputSink& output) {
    const std::optional<BlobDocument> found = findBlob(document);
    if (found) {
        expandBlob(*found, output);
    }
    return found.has_value();
}

}  // namespace quillmark
