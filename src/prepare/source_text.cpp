#include "prepare/source_text.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

#include "platform/file_name.h"
#include "prepare/byte_search.h"

namespace quillmark::preparing {

namespace {

constexpr std::size_t kReadSize = std::size_t{256} * 1024;
constexpr std::size_t kDeepest = 64;

/// What is compared to find a file that includes itself.
std::filesystem::path identityOf(const std::string& path) {
    std::error_code error;
    const std::filesystem::path canonical = std::filesystem::weakly_canonical(toPath(path), error);
    return error ? toPath(path) : canonical;
}

bool isFile(const std::string& path) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(toPath(path), error);
    return std::filesystem::exists(status) && !std::filesystem::is_directory(status);
}

bool isAbsolute(const std::string& name) {
    return toPath(name).is_absolute();
}

}  // namespace

std::size_t SourceText::Level::read(char* buffer, std::size_t size) {
    if (pending.empty()) {
        return input.read(buffer, size);
    }
    const std::size_t count = pending.copy(buffer, size);
    pending.erase(0, count);
    return count;
}

bool SourceText::open() {
    levels_.clear();
    begin_ = end_ = passed_ = offset_ = 0;
    auto stored = files_.openMain();
    if (stored == nullptr) {
        report_.error(files_.mainName, "cannot be read");
        return false;
    }
    const std::uint32_t file = report_.fileNumber(files_.mainName);
    levels_.push_back({file, files_.mainName, DecodedInput(std::move(stored)), {}});
    runs_ = {{0, {file, 1}}};
    last_ = runs_.front();
    lastRun_ = 0;
    return true;
}

/// Makes sure that so many bytes fit behind the window.
void SourceText::makeRoom(std::size_t size) {
    if (end_ + size <= capacity_) {
        return;
    }
    forgetPlaces();
    const std::size_t from = begin_ - passed_;
    const std::size_t kept = end_ - from;
    if (kept + size > capacity_) {
        const std::size_t larger = std::max(2 * capacity_, kept + size);
        auto grown = std::make_unique_for_overwrite<char[]>(larger);
        std::copy_n(buffer_.get() + from, kept, grown.get());
        buffer_ = std::move(grown);
        capacity_ = larger;
    } else {
        std::memmove(buffer_.get(), buffer_.get() + from, kept);
    }
    offset_ += from;
    begin_ = passed_;
    end_ = kept;
}

bool SourceText::more() {
    while (!report_.hasFailed()) {
        makeRoom(kReadSize);
        Level& level = levels_.back();
        const std::size_t count = level.hasEnded && level.pending.empty()
                                      ? 0
                                      : level.read(buffer_.get() + end_, kReadSize);
        if (count > 0) {
            end_ += withoutMeaningless(buffer_.get() + end_, count);
            return true;
        }
        if (level.input.failed()) {
            report_.error(level.path, "cannot be read to its end");
            return false;
        }
        if (levels_.size() == 1) {
            return false;
        }
        if (endLevel()) {
            return true;
        }
    }
    return false;
}

/// The reader takes bytes 0xFF out wherever they stand, so that nothing else has to know of them.
/// Returns how many bytes are left.
std::size_t SourceText::withoutMeaningless(char* bytes, std::size_t count) {
    constexpr char kMeaningless = '\xFF';
    if (std::memchr(bytes, static_cast<unsigned char>(kMeaningless), count) == nullptr) {
        return count;
    }
    hasDroppedBytes_ = true;
    return static_cast<std::size_t>(std::remove(bytes, bytes + count, kMeaningless) - bytes);
}

/// Goes back to the file that included the one which is over. That ends in a line feed in any case,
/// so that none of its words or comments goes on behind it; true if that had to be put there first.
bool SourceText::endLevel() {
    Level& level = levels_.back();
    if (!std::exchange(level.hasEnded, true) && end_ > begin_ && buffer_[end_ - 1] != '\n') {
        buffer_[end_] = '\n';
        ++end_;
        return true;
    }
    levels_.pop_back();
    const Level& outer = levels_.back();
    runs_.push_back({offset_ + end_, {outer.file, outer.resumeLine}});
    return false;
}

/// Its lines are counted when its bytes are overwritten, if nobody asks before.
void SourceText::discard(std::size_t count) {
    begin_ += count;
}

void SourceText::passOn(std::size_t count) {
    begin_ += count;
    passed_ += count;
}

/// Makes the window's first byte the first one whose place is known.
void SourceText::forgetPlaces() {
    const Place place = placeOf(0);
    const std::size_t start = offset_ + begin_;
    runs_.erase(runs_.begin(), std::find_if(runs_.begin(), runs_.end(), [start](const Run& run) {
                    return run.offset > start;
                }));
    runs_.insert(runs_.begin(), {start, place});
    last_ = runs_.front();
    lastRun_ = 0;
}

Place SourceText::placeOf(std::size_t position) {
    const std::size_t wanted = offset_ + begin_ + position;
    std::size_t run = runs_.size() - 1;
    while (run > 0 && runs_[run].offset > wanted) {
        --run;
    }
    if (run != lastRun_ || wanted < last_.offset) {
        lastRun_ = run;
        last_ = runs_[run];
    }
    const char* const from = buffer_.get() + (last_.offset - offset_);
    const char* const to = buffer_.get() + (wanted - offset_);
    last_.place.line +=
        static_cast<std::uint32_t>(countLineFeeds({from, static_cast<std::size_t>(to - from)}));
    last_.offset = wanted;
    return last_.place;
}

std::size_t SourceText::fileEnd(std::size_t position) const {
    const std::size_t wanted = offset_ + begin_ + position;
    for (const Run& run : runs_) {
        if (run.offset > wanted) {
            return run.offset - offset_ - begin_;
        }
    }
    return std::string_view::npos;
}

void SourceText::insert(std::size_t position, std::string_view bytes) {
    makeRoom(bytes.size());
    char* const at = buffer_.get() + begin_ + position;
    std::memmove(at + bytes.size(), at, end_ - begin_ - position);
    std::memcpy(at, bytes.data(), bytes.size());
    end_ += bytes.size();
    shiftRuns(position, bytes.size());
}

void SourceText::erase(std::size_t from, std::size_t to) {
    char* const at = buffer_.get() + begin_;
    std::memmove(at + from, at + to, end_ - begin_ - to);
    end_ -= to - from;
    shiftRuns(from, from - to);
}

/// Moves the files that begin behind a position, a negative distance being one beyond all numbers.
void SourceText::shiftRuns(std::size_t position, std::size_t distance) {
    for (Run& run : runs_) {
        if (run.offset > offset_ + begin_ + position) {
            run.offset += distance;
        }
    }
    last_ = runs_.front();
    lastRun_ = 0;
}

SourceText::IncludeResult SourceText::include(std::size_t from, std::size_t to,
                                              const std::string& name) {
    const Place place = placeOf(from);
    const std::string path = findFile(name);
    if (path.empty()) {
        return IncludeResult::Missing;
    }
    const auto identity = identityOf(path);
    const bool isOpen = std::any_of(levels_.begin(), levels_.end(), [&](const Level& level) {
        return identityOf(level.path) == identity;
    });
    if (isOpen || levels_.size() >= kDeepest) {
        report_.error(place, (isOpen ? "a file includes itself: " : "includes are too deep: ") +
                                 chainTo(path));
        return IncludeResult::Refused;
    }
    auto stored = StandardInputFile::openBinary(path);
    if (stored == nullptr) {
        report_.error(place, "cannot read " + path);
        return IncludeResult::Refused;
    }
    Level& outer = levels_.back();
    outer.resumeLine = placeOf(to).line;
    outer.pending.insert(0, view().substr(to));
    end_ = begin_ + from;
    const std::size_t start = offset_ + end_;
    std::erase_if(runs_, [start](const Run& run) { return run.offset > start; });
    const std::uint32_t file = report_.fileNumber(path);
    runs_.push_back({start, {file, 1}});
    last_ = runs_.front();
    lastRun_ = 0;
    levels_.push_back({file, path, DecodedInput(std::move(stored)), {}});
    return IncludeResult::Included;
}

std::string SourceText::chainTo(const std::string& last) const {
    std::string text;
    for (const Level& level : levels_) {
        text += level.path + ", ";
    }
    return text + last;
}

/// The path of a file that is included. Descriptions are made on Windows too, where a backslash
/// parts directories. Empty if there is no such file.
std::string SourceText::findFile(const std::string& name) const {
    std::string slashes = name;
    std::replace(slashes.begin(), slashes.end(), '\\', '/');
    const std::string& outer = levels_.back().path;
    std::vector<std::string> directories{
        outer.substr(0, startOfLastPart(outer, kDirectorySeparators))};
    for (const std::string& directory : files_.includeDirectories) {
        directories.push_back(directory.empty() ? directory : directory + "/");
    }
    if (isAbsolute(name)) {
        directories = {""};
    }
    for (const std::string& directory : directories) {
        for (const std::string& spelling : {name, slashes}) {
            if (!name.empty() && isFile(directory + spelling)) {
                return directory + spelling;
            }
        }
    }
    return {};
}

}  // namespace quillmark::preparing
