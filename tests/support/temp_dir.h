#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <system_error>

namespace quillmark {

/// A fresh, empty directory that goes with its owner.
class TempDir {
  public:
    TempDir() {
        std::random_device random;
        do {
            path_ = std::filesystem::temp_directory_path() /
                    ("quillmark_test_" + std::to_string(random()));
        } while (!std::filesystem::create_directory(path_));
    }
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;
    ~TempDir() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::filesystem::path& path() const { return path_; }

    /// The path of something inside the directory.
    std::string file(std::string_view name) const {
        return path_.generic_string().append("/").append(name);
    }

  private:
    std::filesystem::path path_;
};

/// Writes a file, replacing what it held.
inline void writeFile(const std::string& path, std::string_view content) {
    std::ofstream stream(path, std::ios::binary | std::ios::trunc);
    stream.write(content.data(), static_cast<std::streamsize>(content.size()));
}

/// The whole content of a file; empty if it cannot be read.
inline std::string readFile(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

}  // namespace quillmark
