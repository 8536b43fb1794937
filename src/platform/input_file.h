#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace quillmark {

/// A stream of bytes that is read once, from front to end. The reading side asks for blocks; where
/// they come from (a file, a pipe, memory in tests) is not its business.
class InputFile {
  public:
    InputFile() = default;
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;
    virtual ~InputFile() = default;

    /// Puts up to `size` bytes (at least 1) into `buffer` and returns how many. 0 is the end of the
    /// input, now and at every later call; an input that cannot be read any further ends there.
    virtual std::size_t read(char* buffer, std::size_t size) = 0;

    /// Whether the input ended because it could not be read any further.
    [[nodiscard]] virtual bool failed() const { return false; }
};

/// An input that was opened by name: a regular file, a pipe, a device.
class StandardInputFile final : public InputFile {
  public:
    /// Opens the file called `name`, bytes that are handed to the system unchanged. Null when it
    /// cannot be opened. A directory can be opened where the C library allows it, and is then
    /// empty.
    static std::unique_ptr<StandardInputFile> open(const std::string& name);

    /// The same for a file of which every byte counts, line ends included.
    static std::unique_ptr<StandardInputFile> openBinary(const std::string& name);

    /// Takes over an open stream from which nothing has been read.
    explicit StandardInputFile(std::FILE* stream);

    ~StandardInputFile() override;

    /// Reads that a signal interrupted are taken up again.
    std::size_t read(char* buffer, std::size_t size) override;

    [[nodiscard]] bool failed() const override { return std::ferror(stream_) != 0; }

  private:
    std::FILE* stream_;
    bool atEnd_ = false;
};

/// An input held in memory, which has to outlive this object.
class MemoryInputFile final : public InputFile {
  public:
    /// `chunkSize` is the largest number of bytes that one read() hands out, 0 for no limit: a
    /// small one stands for a pipe that fills slowly.
    explicit MemoryInputFile(std::string_view bytes, std::size_t chunkSize = 0);

    std::size_t read(char* buffer, std::size_t size) override;

  private:
    std::string_view rest_;
    std::size_t chunkSize_;
};

/// The number of bytes that a regular file announces, 0 for everything else.
std::size_t announcedSize(const std::string& name);

/// Replaces `bytes` by everything that the input holds, of which `expectedSize` is a guess: with a
/// good one nothing is copied on the way. Returns false when the input could not be read to its
/// end; `bytes` is what came before.
[[nodiscard]] bool readToEnd(InputFile& input, std::size_t expectedSize, std::string& bytes);

/// Replaces `bytes` by the content of the named file. Returns false when the file could not be
/// opened or not be read to its end, as a directory or a device with a defect. Pipes and FIFOs are
/// read to their end.
[[nodiscard]] bool readWholeFile(const std::string& name, std::string& bytes);

}  // namespace quillmark
