#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace quillmark {

/// A destination for bytes that are produced in many small pieces. The pieces are gathered in one
/// large buffer; a concrete sink only sees what `drain` hands it. Trouble is remembered, never
/// thrown: whoever cares asks `ok` once, after `finish`.
///
/// Whoever owns a sink calls `finish` when the last byte is written; what was not finished may be
/// lost (a FileSink finishes itself).
class OutputSink {
  public:
    /// Every `drain` but the last gets a positive multiple of this. A multiple of 64 KiB, which
    /// keeps the bytes that DeflateSink makes independent of how they were written.
    static constexpr std::size_t kBufferSize = std::size_t{256} * 1024;

    OutputSink();
    OutputSink(const OutputSink&) = delete;
    OutputSink& operator=(const OutputSink&) = delete;
    virtual ~OutputSink() = default;

    void write(std::string_view bytes) {
        if (bytes.size() > kBufferSize - used_) {
            writeAcross(bytes);
            return;
        }
        bytes.copy(buffer_.get() + used_, bytes.size());
        used_ += bytes.size();
    }

    /// How many bytes may be put together in place at a time: there are as many from room() on.
    /// What stands there up to the end that written() is told, is written.
    static constexpr std::size_t kRoom = 1024;
    char* room() { return buffer_.get() + used_; }
    void written(const char* end) {
        used_ = static_cast<std::size_t>(end - buffer_.get());
        if (used_ >= kBufferSize) {
            drainWholeBuffer();
        }
    }

    /// Writes so many blanks and then the bytes.
    void writeIndented(std::size_t blanks, std::string_view bytes) {
        static constexpr std::string_view kBlanks = "                                ";
        for (; blanks > kBlanks.size(); blanks -= kBlanks.size()) {
            write(kBlanks);
        }
        if (kBlanks.size() + bytes.size() > kBufferSize - used_) {
            write(kBlanks.substr(0, blanks));
            write(bytes);
            return;
        }
        // A copy of known size is a move or two; the bytes go over the blanks that are too many.
        kBlanks.copy(buffer_.get() + used_, kBlanks.size());
        bytes.copy(buffer_.get() + used_ + blanks, bytes.size());
        used_ += blanks + bytes.size();
    }

    /// Hands on what is still buffered and ends the sink. Nothing may be written afterwards; a
    /// second call does nothing.
    void finish();

    /// False as soon as anything went wrong. Final only after `finish`.
    [[nodiscard]] bool ok() const { return ok_; }

  protected:
    /// Takes the next bytes; they are gone after the call.
    virtual void drain(std::string_view bytes) = 0;

    /// Called once, after the last `drain`.
    virtual void end() {}

    void fail() { ok_ = false; }

  private:
    void writeAcross(std::string_view bytes);
    void drainWholeBuffer();

    std::unique_ptr<char[]> buffer_;  ///< with room behind its end
    std::size_t used_ = 0;
    bool ok_ = true;
    bool finished_ = false;
};

/// Appends to a string of the caller, which must outlive the sink. The string is complete after
/// `finish`.
class StringSink final : public OutputSink {
  public:
    explicit StringSink(std::string& destination) : destination_(destination) {}

  protected:
    void drain(std::string_view bytes) override { destination_ += bytes; }

  private:
    std::string& destination_;
};

/// Writes a file of the given name, created or emptied first. The name is a byte string handed to
/// the operating system unchanged. Writes that a signal interrupted are taken up again; after any
/// other error the rest is dropped.
class FileSink final : public OutputSink {
  public:
    explicit FileSink(const std::string& name);

    /// Takes over an open stream to which nothing has been written; nullptr is a file that could
    /// not be opened.
    explicit FileSink(std::FILE* stream);

    ~FileSink() override;

    /// False when the file could not be opened; `ok` is false then, too.
    [[nodiscard]] bool isOpen() const { return opened_; }

  protected:
    void drain(std::string_view bytes) override;
    void end() override;

  private:
    std::FILE* file_;
    bool opened_;
};

}  // namespace quillmark
