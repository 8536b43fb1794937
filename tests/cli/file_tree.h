#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace quillmark::golden {

/// The content of every file below a directory, by its path relative to that directory with forward
/// slashes. An empty directory counts as a file "{{EMPTY}}" inside it, since the repository cannot
/// hold it otherwise; a symbolic link, pipe or unreadable file has a description for its content.
using FileTree = std::map<std::string, std::string>;

/// Reads a tree; empty if there is no such directory.
FileTree readTree(const std::filesystem::path& directory);

/// Writes a tree, replacing what stood there; no directory is left of an empty one.
void writeTree(const std::filesystem::path& directory, const FileTree& tree);

/// The bytes of one file; empty if it cannot be read.
std::string readBytes(const std::filesystem::path& path);

/// Writes one file; an empty one is removed instead, as its absence says the same.
void writeUnlessEmpty(const std::filesystem::path& path, const std::string& content);

/// One file of a package.
struct PackageEntry {
    std::string name;
    std::string content;
};

/// Reads a package in the order of its entries. It must be a plain pax archive without compression,
/// its entries regular files with proper relative names and whole contents; anything else adds a
/// line to `problems`.
std::vector<PackageEntry> readPackage(const std::string& bytes, std::vector<std::string>& problems);

}  // namespace quillmark::golden
