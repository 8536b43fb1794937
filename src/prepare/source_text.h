#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "prepare/decoded_input.h"
#include "prepare/report.h"

namespace quillmark::preparing {

/// Where the files of a description come from.
struct SourceFiles {
    /// What the description itself is called, and how to read it once more from its beginning.
    std::string mainName;
    std::function<std::unique_ptr<InputFile>()> openMain;

    /// Looked through for included files behind the directory of the file that includes.
    std::vector<std::string> includeDirectories;
};

/// The text of a description with the files that it includes, read once from front to end. A window
/// of it is in memory: from the first byte that was not given away to the last one that was
/// fetched. Positions count from the beginning of the window.
class SourceText {
  public:
    SourceText(const SourceFiles& files, Report& report) : files_(files), report_(report) {}

    /// Begins with the description. False, and an error, if it cannot be read.
    bool open();

    /// In what form the description itself is kept.
    [[nodiscard]] const StoredForm& form() const { return levels_.front().input.form(); }

    /// Whether bytes 0xFF were taken out, which mean nothing to the reader.
    [[nodiscard]] bool hasDroppedBytes() const { return hasDroppedBytes_; }

    [[nodiscard]] std::string_view view() const { return {buffer_.get() + begin_, end_ - begin_}; }

    /// Fetches more behind the end of the window. False at the end of the description, and after
    /// an error.
    bool more();

    /// Gives the first bytes of the window away.
    void discard(std::size_t count);

    /// Gives the first bytes of the window away, but keeps them where they are until they are
    /// forgotten: as passed(), all that was passed on since then.
    void passOn(std::size_t count);
    [[nodiscard]] std::string_view passed() const {
        return {buffer_.get() + begin_ - passed_, passed_};
    }
    void forgetPassed() { passed_ = 0; }

    /// Where the byte at a position comes from.
    [[nodiscard]] Place placeOf(std::size_t position);

    /// Where behind a position the next file begins; beyond the window if none does within it.
    [[nodiscard]] std::size_t fileEnd(std::size_t position) const;

    enum class IncludeResult : std::uint8_t { Included, Missing, Refused };

    /// Puts a file in place of the bytes from `from` to `to`, which asked for it. Refused, with an
    /// error, if it includes itself or cannot be read; nothing is done if there is no such file.
    IncludeResult include(std::size_t from, std::size_t to, const std::string& name);

    /// Takes the bytes from `from` to `to` out of the window.
    void erase(std::size_t from, std::size_t to);

    /// Puts bytes into the window that no file has.
    void insert(std::size_t position, std::string_view bytes);

    /// The files that are open, from the first to one that should be, for a message.
    [[nodiscard]] std::string chainTo(const std::string& last) const;

  private:
    /// A file that is being read, and what of it stands behind a file that it includes.
    struct Level {
        std::uint32_t file;
        std::string path;
        DecodedInput input;
        std::string pending;
        std::uint32_t resumeLine = 1;
        bool hasEnded = false;

        std::size_t read(char* buffer, std::size_t size);
    };

    /// From this byte of the whole text on, lines are those of a file.
    struct Run {
        std::size_t offset;
        Place place;
    };

    void makeRoom(std::size_t size);
    std::size_t withoutMeaningless(char* bytes, std::size_t count);
    bool endLevel();
    void forgetPlaces();
    void shiftRuns(std::size_t position, std::size_t distance);
    [[nodiscard]] std::string findFile(const std::string& name) const;

    const SourceFiles& files_;
    Report& report_;
    std::vector<Level> levels_;
    std::unique_ptr<char[]> buffer_;
    std::size_t capacity_ = 0;
    bool hasDroppedBytes_ = false;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    /// How many bytes before the window are still wanted.
    std::size_t passed_ = 0;
    /// How many bytes of the whole text lie before the buffer's first.
    std::size_t offset_ = 0;
    /// The place of the window's first byte, and the changes of file behind it.
    std::vector<Run> runs_;
    /// The place that was asked for last: the next one is mostly behind it.
    Run last_{};
    std::size_t lastRun_ = 0;
};

}  // namespace quillmark::preparing
