#pragma once

#include <cstdio>
#include <memory>
#include <string>

#include "platform/input_file.h"
#include "quillmark/description.h"

namespace quillmark::a2ltool {

/// A description that is named on the command line: a file, a pipe, or standard input by the name
/// "-".
class Input {
  public:
    explicit Input(std::string name);
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;
    ~Input();

    /// What messages call it.
    const std::string& shownName() const { return shownName_; }

    /// Reads it as `convert` would. With `keepText`, what can't be opened a second time is copied
    /// to a temporary file on its way.
    Description read(const ReadOptions& options, bool keepText = false);

    /// The bytes of what was read with `keepText`, from the beginning; null where they can't be
    /// had.
    std::unique_ptr<InputFile> text();

  private:
    Description readOnce(InputFile& stream, const ReadOptions& options);

    std::string name_;
    std::string shownName_;
    bool isPlainFile_;
    std::FILE* copy_ = nullptr;  ///< of what is no plain file
};

}  // namespace quillmark::a2ltool
