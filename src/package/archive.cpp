#include "package/archive.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>

#include <archive.h>
#include <archive_entry.h>

#include "package/entry_status.h"
#include "package/error_texts.h"
#include "platform/file_name.h"
#include "platform/file_stream.h"
#include "platform/input_file.h"
#include "platform/replacement.h"

namespace quillmark {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kBlockBytes = 8192;

using Entry = std::unique_ptr<archive_entry, void (*)(archive_entry*)>;
using Writer = std::unique_ptr<archive, int (*)(archive*)>;

/// A warning means that all was written, though not in the way that was asked for.
bool succeeded(int result) {
    return result == ARCHIVE_OK || result == ARCHIVE_WARN;
}

struct FilterRow {
    int compression;
    int (*add)(archive* writer);
};

constexpr std::array kFilters = {
    FilterRow{1, &archive_write_add_filter_gzip},
    FilterRow{2, &archive_write_add_filter_bzip2},
};

int addFilter(archive* writer, int compression) {
    for (const FilterRow& row : kFilters) {
        if (row.compression == compression) {
            return row.add(writer);
        }
    }
    return archive_write_add_filter_none(writer);
}

/// Copies the content block by block. The header has announced `size` bytes, so it must be these.
bool writeContent(archive* writer, StandardInputFile& file, la_int64_t size) {
    std::array<char, kBlockBytes> block{};
    la_int64_t written = 0;
    while (const std::size_t count = file.read(block.data(), block.size())) {
        if (archive_write_data(writer, block.data(), count) != static_cast<la_ssize_t>(count)) {
            return false;
        }
        written += static_cast<la_int64_t>(count);
    }
    return !file.failed() && written == size;
}

bool writeFile(archive* writer, const StagedFile& staged) {
    std::FILE* const stream = openStream(staged.path, "rb");
    if (stream == nullptr) {
        return false;
    }
    StandardInputFile file(stream);
    const Entry entry(archive_entry_new(), &archive_entry_free);
    if (entry == nullptr || !copyStatus(stream, entry.get())) {
        return false;
    }
    archive_entry_set_pathname(entry.get(), staged.entryName.c_str());
    return succeeded(archive_write_header(writer, entry.get())) &&
           writeContent(writer, file, archive_entry_size(entry.get())) &&
           succeeded(archive_write_finish_entry(writer));
}

bool writeFiles(archive* writer, const std::vector<StagedFile>& files) {
    for (const StagedFile& staged : files) {
        if (!writeFile(writer, staged)) {
            return false;
        }
    }
    return true;
}

bool isAscii(const StagedFile& file) {
    constexpr unsigned char kLastAscii = 0x7F;
    return std::ranges::all_of(file.entryName,
                               [](unsigned char byte) { return byte <= kLastAscii; });
}

/// Names are bytes in the package, too. That is said in a header of each entry, which is spared
/// where it would say nothing; without it Windows would take the bytes for Latin-1.
bool setFormat(archive* writer, const std::vector<StagedFile>& files) {
    return succeeded(archive_write_set_format_pax_restricted(writer)) &&
           (std::ranges::all_of(files, &isAscii) ||
            succeeded(archive_write_set_format_option(writer, nullptr, "hdrcharset", "BINARY")));
}

// The library has a call for each kind of characters that paths of a system are made of.
[[maybe_unused]] int openFile(archive* writer, const char* path) {
    return archive_write_open_filename(writer, path);
}
[[maybe_unused]] int openFile(archive* writer, const wchar_t* path) {
    return archive_write_open_filename_w(writer, path);
}

/// Writes the whole archive into the file of that name.
int writeArchive(const fs::path& path, const std::vector<StagedFile>& files, int compression) {
    const Writer writer(archive_write_new(), &archive_write_free);
    if (writer == nullptr || !succeeded(addFilter(writer.get(), compression)) ||
        !setFormat(writer.get(), files)) {
        return kArchiveNotMade;
    }
    if (!succeeded(openFile(writer.get(), path.c_str()))) {
        return kArchiveNotOpened;
    }
    const bool complete = writeFiles(writer.get(), files);
    if (!complete) {
        // Otherwise closing would fill up a broken entry to its announced size.
        archive_write_fail(writer.get());
    }
    return succeeded(archive_write_close(writer.get())) && complete ? kPackageOk
                                                                    : kArchiveNotWritten;
}

/// Creates an empty file that did not exist, in the directory of another one. The name is short
/// whatever the other's name is, as that may already be as long as names can be.
std::optional<fs::path> createFileBeside(const fs::path& other) {
    constexpr int kMostNames = 1000;
    for (int i = 1; i <= kMostNames; ++i) {
        fs::path path = other.parent_path() / (".zpki_" + std::to_string(i) + ".part");
        if (createEmptyFile(toName(path))) {
            return path;
        }
        std::error_code error;
        if (!fs::exists(fs::symlink_status(path, error))) {
            return std::nullopt;
        }
    }
    return std::nullopt;
}

/// Writes the archive over the target itself. What is there before is lost.
int overwriteArchive(const fs::path& target, const std::vector<StagedFile>& files,
                     int compression) {
    const int code = writeArchive(target, files, compression);
    std::error_code ignored;
    if (code == kArchiveNotWritten && fs::is_regular_file(target, ignored)) {
        fs::remove(target, ignored);
    }
    return code;
}

/// Writes the archive under another name and moves it to its place, which `old` describes. Where a
/// directory takes no new file, or does not let go of the old one, the target itself is written.
int replaceArchive(const fs::path& target, const fs::file_status& old,
                   const std::vector<StagedFile>& files, int compression) {
    const std::optional<fs::path> part = createFileBeside(target);
    if (!part) {
        return overwriteArchive(target, files, compression);
    }
    std::error_code error;
    const int code = writeArchive(*part, files, compression);
    if (code == kPackageOk) {
        std::error_code ignored;
        if (fs::exists(old)) {
            fs::permissions(*part, old.permissions(), ignored);
        }
        fs::rename(*part, target, error);
    }
    if (code != kPackageOk || error) {
        std::error_code ignored;
        fs::remove(*part, ignored);
    }
    return error ? overwriteArchive(target, files, compression) : code;
}

}  // namespace

int createArchive(const std::string& archivePath, const std::vector<StagedFile>& files,
                  int compression) {
    // On Windows the library makes a slash of each backslash in the name of an entry. It has to
    // know which of them are bytes of other characters.
    const NameCharacters characters;
    const fs::path target = toPath(withoutLinks(archivePath));
    if (target.filename().empty()) {
        return kArchiveNotOpened;
    }
    std::error_code error;
    const fs::file_status old = fs::status(target, error);
    if (old.type() == fs::file_type::none || fs::is_directory(old)) {
        return kArchiveNotOpened;
    }
    if (fs::exists(old) && !fs::is_regular_file(old)) {
        return overwriteArchive(target, files, compression);
    }
    if (isWriteProtected(toName(target))) {
        return kArchiveNotOpened;
    }
    return replaceArchive(target, old, files, compression);
}

}  // namespace quillmark
