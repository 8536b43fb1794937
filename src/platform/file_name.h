#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

namespace quillmark {

// Names of files are bytes, from the command line through messages to the entries of a package, and
// nobody recodes them. On Windows they are text in the ANSI code page, as the command line and the
// name of the user come in it; only here do they become the system's wide names and bytes again.

/// The path of that name. Empty on Windows if the bytes are no text in the code page: there can be
/// no such file.
std::filesystem::path toPath(std::string_view name);

/// The name of a path, with forward slashes between its parts. Empty on Windows if the code page
/// lacks one of its characters.
std::string toName(const std::filesystem::path& path);

/// The name as the path of a URI has it before special bytes are written with a percent sign: with
/// forward slashes, one in front of a drive, and in UTF-8. Its bytes as they are but on Windows.
std::string toUriPath(std::string_view name);

/// Where the last part of a name begins: behind the last of the bytes in `separators`. Where a
/// character of the code page has two bytes, the second one is no separator.
std::size_t startOfLastPart(std::string_view name, std::string_view separators);

/// What parts directories in a name, as the system has it: a backslash may stand in a file's name
/// except on Windows.
extern const std::string_view kDirectorySeparators;

/// As long as it lives, the C library takes bytes for the text that names are on this system, and
/// so does every library that asks it what characters they are. It changes nothing but on Windows.
class NameCharacters {
  public:
    NameCharacters();
    NameCharacters(const NameCharacters&) = delete;
    NameCharacters& operator=(const NameCharacters&) = delete;
    ~NameCharacters();

  private:
    std::string old_;
};

}  // namespace quillmark
