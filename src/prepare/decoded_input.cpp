#include "prepare/decoded_input.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include <zlib.h>

#include "platform/utf16_text.h"

namespace quillmark::preparing {

namespace {

using Characters = StoredForm::Characters;

constexpr std::size_t kBlockSize = std::size_t{64} * 1024;

/// So many bytes tell in what form a file is.
constexpr std::size_t kLongestStart = 4;

/// An input some of whose first bytes have been read already.
class PrefixedInput final : public InputFile {
  public:
    explicit PrefixedInput(std::unique_ptr<InputFile> rest) : rest_(std::move(rest)) {}

    /// The first bytes, as many as asked for if there are that many; they will be read again.
    std::string_view peek(std::size_t count) {
        const std::size_t have = prefix_.size();
        if (have < count) {
            prefix_.resize(count);
            std::size_t used = have;
            while (used < count) {
                const std::size_t got = rest_->read(prefix_.data() + used, count - used);
                if (got == 0) {
                    break;
                }
                used += got;
            }
            prefix_.resize(used);
        }
        return std::string_view(prefix_).substr(0, count);
    }

    void drop(std::size_t count) { prefix_.erase(0, count); }

    std::size_t read(char* buffer, std::size_t size) override {
        if (prefix_.empty()) {
            return rest_->read(buffer, size);
        }
        const std::size_t count = prefix_.copy(buffer, size);
        prefix_.erase(0, count);
        return count;
    }

    [[nodiscard]] bool failed() const override { return rest_->failed(); }

  private:
    std::unique_ptr<InputFile> rest_;
    std::string prefix_;
};

/// What gzip packed, members one behind the other taken together.
class GzipInput final : public InputFile {
  public:
    explicit GzipInput(std::unique_ptr<InputFile> packed) : packed_(std::move(packed)) {
        constexpr int kGzipWindow = 15 + 16;
        ready_ = inflateInit2(&stream_, kGzipWindow) == Z_OK;
        failed_ = !ready_;
    }
    GzipInput(const GzipInput&) = delete;
    GzipInput& operator=(const GzipInput&) = delete;
    ~GzipInput() override {
        if (ready_) {
            inflateEnd(&stream_);
        }
    }

    std::size_t read(char* buffer, std::size_t size) override {
        stream_.next_out = reinterpret_cast<Bytef*>(buffer);
        stream_.avail_out = static_cast<uInt>(std::min(size, kBlockSize));
        const uInt room = stream_.avail_out;
        while (!failed_ && !atEnd_ && stream_.avail_out == room) {
            step();
        }
        return room - stream_.avail_out;
    }

    [[nodiscard]] bool failed() const override { return failed_ || packed_->failed(); }

  private:
    void step() {
        if (stream_.avail_in == 0) {
            stream_.next_in = reinterpret_cast<Bytef*>(block_.data());
            stream_.avail_in = static_cast<uInt>(packed_->read(block_.data(), block_.size()));
            if (stream_.avail_in == 0) {
                atEnd_ = true;
                failed_ = !betweenMembers_;
                return;
            }
        }
        if (std::exchange(betweenMembers_, false) && inflateReset(&stream_) != Z_OK) {
            failed_ = true;
            return;
        }
        const int status = inflate(&stream_, Z_NO_FLUSH);
        betweenMembers_ = status == Z_STREAM_END;
        failed_ = status != Z_OK && status != Z_STREAM_END && status != Z_BUF_ERROR;
    }

    std::unique_ptr<InputFile> packed_;
    z_stream stream_{};
    std::array<char, kBlockSize> block_{};
    bool ready_ = false;
    bool failed_ = false;
    bool atEnd_ = false;
    bool betweenMembers_ = false;
};

/// UTF-16 as UTF-8.
class Utf16Input final : public InputFile {
  public:
    Utf16Input(std::unique_ptr<InputFile> stored, bool highByteFirst)
        : stored_(std::move(stored)), decoder_(highByteFirst) {}

    std::size_t read(char* buffer, std::size_t size) override {
        while (text_.size() == position_ && !atEnd_) {
            fetch();
        }
        const std::size_t count = text_.copy(buffer, size, position_);
        position_ += count;
        return count;
    }

    [[nodiscard]] bool failed() const override { return stored_->failed(); }

  private:
    void fetch() {
        std::array<char, kBlockSize> block;
        const std::size_t count = stored_->read(block.data(), block.size());
        text_.clear();
        position_ = 0;
        if (count == 0) {
            atEnd_ = true;
            decoder_.finish(text_);
        } else {
            decoder_.decode({block.data(), count}, text_);
        }
    }

    std::unique_ptr<InputFile> stored_;
    Utf16Decoder decoder_;
    std::string text_;
    std::size_t position_ = 0;
    bool atEnd_ = false;
};

struct MarkRow {
    std::string_view bytes;
    std::size_t markSize;
    Characters characters;
};

/// A description begins with ASCII characters. So without a mark, a NUL byte beside each of the
/// first ones tells UTF-16.
StoredForm::Characters charactersOf(std::string_view start, std::size_t& markSize) {
    static constexpr MarkRow kMarks[] = {
        {"\xEF\xBB\xBF", 3, Characters::Utf8},
        {"\xFF\xFE", 2, Characters::Utf16Le},
        {"\xFE\xFF", 2, Characters::Utf16Be},
    };
    for (const MarkRow& row : kMarks) {
        if (start.substr(0, row.bytes.size()) == row.bytes) {
            markSize = row.markSize;
            return row.characters;
        }
    }
    markSize = 0;
    const auto isNul = [start](std::size_t at) { return start[at] == '\0'; };
    if (start.size() < kLongestStart || isNul(0) == isNul(1) || isNul(0) != isNul(2) ||
        isNul(1) != isNul(3)) {
        return Characters::Bytes;
    }
    return isNul(0) ? Characters::Utf16Be : Characters::Utf16Le;
}

bool isGzip(std::string_view start) {
    return start.substr(0, 3) == "\x1F\x8B\x08";
}

}  // namespace

DecodedInput::DecodedInput(std::unique_ptr<InputFile> stored) {
    auto input = std::make_unique<PrefixedInput>(std::move(stored));
    if (isGzip(input->peek(kLongestStart))) {
        form_.isPacked = true;
        input = std::make_unique<PrefixedInput>(std::make_unique<GzipInput>(std::move(input)));
    }
    std::size_t markSize = 0;
    form_.characters = charactersOf(input->peek(kLongestStart), markSize);
    input->drop(markSize);
    form_.hasMark = markSize > 0;
    if (form_.isUtf16()) {
        text_ =
            std::make_unique<Utf16Input>(std::move(input), form_.characters == Characters::Utf16Be);
    } else {
        text_ = std::move(input);
    }
}

DecodedInput::DecodedInput(DecodedInput&&) noexcept = default;
DecodedInput& DecodedInput::operator=(DecodedInput&&) noexcept = default;
DecodedInput::~DecodedInput() = default;

}  // namespace quillmark::preparing
