#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

namespace quillmark::preparing {

/// Where the prepared description goes. Bytes that were written can be replaced by as many others
/// until the end; what was not finished leaves no trace.
class Output {
  public:
    Output() = default;
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;
    virtual ~Output() = default;

    virtual void write(std::string_view bytes) = 0;
    virtual void replace(std::uint64_t position, std::string_view bytes) = 0;

    /// Forgets everything that was written.
    virtual void restart() = 0;

    /// Makes the output what it is to be. False if that does not succeed.
    [[nodiscard]] virtual bool finish() = 0;
};

/// Keeps nothing.
class NoOutput final : public Output {
  public:
    void write(std::string_view) override {}
    void replace(std::uint64_t, std::string_view) override {}
    void restart() override {}
    [[nodiscard]] bool finish() override { return true; }
};

/// Writes to a string of the caller, which outlives this object.
class StringOutput final : public Output {
  public:
    explicit StringOutput(std::string& text) : text_(text) {}

    void write(std::string_view bytes) override { text_ += bytes; }
    void replace(std::uint64_t position, std::string_view bytes) override {
        text_.replace(static_cast<std::size_t>(position), bytes.size(), bytes);
    }
    void restart() override { text_.clear(); }
    [[nodiscard]] bool finish() override { return true; }

  private:
    std::string& text_;
};

/// Writes to a file beside the one that is asked for, and puts it in its place at the end. What is
/// no regular file, such as the standard output (`-`), gets all bytes at the end.
class FileOutput final : public Output {
  public:
    explicit FileOutput(std::string name);
    ~FileOutput() override;

    /// Whether there is a place to write to.
    [[nodiscard]] bool isOpen() const { return file_ != nullptr; }

    void write(std::string_view bytes) override;
    void replace(std::uint64_t position, std::string_view bytes) override;
    void restart() override;
    [[nodiscard]] bool finish() override;

  private:
    void flush();
    void put(std::string_view bytes);
    [[nodiscard]] bool copyTo(std::FILE* target);
    [[nodiscard]] bool moveIntoPlace();

    std::string name_;
    std::string temporaryName_;  ///< empty for a file without a name
    std::FILE* file_ = nullptr;
    std::string buffer_;
    std::uint64_t length_ = 0;  ///< of what was written, and not forgotten
    bool isGood_ = true;
};

}  // namespace quillmark::preparing
