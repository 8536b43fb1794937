#include "cli/file_tree.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>

#include <archive.h>
#include <archive_entry.h>

namespace quillmark::golden {
namespace {

namespace fs = std::filesystem;

std::string contentOf(const fs::directory_entry& entry) {
    if (entry.is_symlink()) {
        return "{{LINK}} " + fs::read_symlink(entry.path()).string();
    }
    if (!entry.is_regular_file()) {
        return "{{SPECIAL}}";
    }
    const std::ifstream probe(entry.path(), std::ios::binary);
    return probe ? readBytes(entry.path()) : "{{UNREADABLE}}";
}

/// Whether a name has a backslash that is not the second byte of a Japanese character.
bool hasBackslash(const std::string& name) {
    constexpr unsigned char kLastAscii = 0x7F;
    std::size_t i = name.find('\\');
    while (i != std::string::npos && i > 0 &&
           static_cast<unsigned char>(name[i - 1]) > kLastAscii) {
        i = name.find('\\', i + 1);
    }
    return i != std::string::npos;
}

/// Whether it is a relative name whose parts all stand for themselves. They are bytes, which a path
/// of the system need not take.
bool isProperName(const std::string& name) {
    if (hasBackslash(name)) {
        return false;
    }
    std::size_t start = 0;
    while (start <= name.size()) {
        const std::size_t end = std::min(name.find('/', start), name.size());
        const std::string_view part(name.data() + start, end - start);
        if (part.empty() || part == "." || part == "..") {
            return false;
        }
        start = end + 1;
    }
    return true;
}

using ArchiveReader = std::unique_ptr<archive, decltype(&archive_read_free)>;

/// Reads the content of the entry at which the archive stands.
std::string readContent(archive* reader, std::vector<std::string>& problems) {
    std::string content;
    std::array<char, 65536> buffer{};
    while (true) {
        const la_ssize_t count = archive_read_data(reader, buffer.data(), buffer.size());
        if (count == 0) {
            return content;
        }
        if (count < 0) {
            const char* text = archive_error_string(reader);
            problems.push_back(std::string("package entry: ") + (text == nullptr ? "" : text));
            return content;
        }
        content.append(buffer.data(), static_cast<std::size_t>(count));
    }
}

}  // namespace

FileTree readTree(const fs::path& directory) {
    FileTree tree;
    std::error_code error;
    if (!fs::is_directory(directory, error)) {
        return tree;
    }
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(directory)) {
        std::string name = entry.path().lexically_relative(directory).generic_string();
        if (!entry.is_symlink() && entry.is_directory()) {
            if (fs::is_empty(entry.path())) {
                tree[name + "/{{EMPTY}}"] = "";
            }
            continue;
        }
        tree[std::move(name)] = contentOf(entry);
    }
    return tree;
}

void writeTree(const fs::path& directory, const FileTree& tree) {
    fs::remove_all(directory);
    for (const auto& [name, content] : tree) {
        const fs::path path = directory / name;
        fs::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << content;
    }
}

std::string readBytes(const fs::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

void writeUnlessEmpty(const fs::path& path, const std::string& content) {
    if (content.empty()) {
        fs::remove(path);
    } else {
        std::ofstream(path, std::ios::binary) << content;
    }
}

std::vector<PackageEntry> readPackage(const std::string& bytes,
                                      std::vector<std::string>& problems) {
    std::vector<PackageEntry> entries;
    const ArchiveReader reader(archive_read_new(), &archive_read_free);
    archive_read_support_format_tar(reader.get());
    archive_read_support_filter_all(reader.get());
    if (archive_read_open_memory(reader.get(), bytes.data(), bytes.size()) != ARCHIVE_OK) {
        problems.emplace_back("not a package");
        return entries;
    }
    archive_entry* entry = nullptr;
    int result = ARCHIVE_OK;
    while ((result = archive_read_next_header(reader.get(), &entry)) == ARCHIVE_OK) {
        const char* name = archive_entry_pathname(entry);
        if (name == nullptr || !isProperName(name) || archive_entry_filetype(entry) != AE_IFREG) {
            problems.push_back(std::string("improper package entry: ") +
                               (name == nullptr ? "" : name));
            continue;
        }
        const la_int64_t size = archive_entry_size(entry);
        entries.push_back({name, readContent(reader.get(), problems)});
        if (size != static_cast<la_int64_t>(entries.back().content.size())) {
            problems.push_back("size of package entry: " + entries.back().name);
        }
    }
    if (result != ARCHIVE_EOF) {
        problems.emplace_back("package is damaged");
    }
    if (archive_filter_code(reader.get(), 0) != ARCHIVE_FILTER_NONE) {
        problems.emplace_back("package is compressed");
    }
    return entries;
}

}  // namespace quillmark::golden
