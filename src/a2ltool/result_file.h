#pragma once

#include <memory>
#include <string>
#include <utility>

#include "platform/output_sink.h"

namespace quillmark::a2ltool {

/// Where a command's result goes: a file that gets its name only when it is complete, or standard
/// output. Until then the result is a file of a name of its own beside it, which goes if the result
/// is never finished. What is no plain file (a device, a pipe) is written directly.
class ResultFile {
  public:
    /// "-" is standard output. Never null; a file that could not be made is not `ok`.
    static std::unique_ptr<ResultFile> open(const std::string& name);

    ResultFile(std::unique_ptr<OutputSink> sink, std::string partName, std::string name)
        : sink_(std::move(sink)), partName_(std::move(partName)), name_(std::move(name)) {}
    ResultFile(const ResultFile&) = delete;
    ResultFile& operator=(const ResultFile&) = delete;
    ~ResultFile();

    OutputSink& sink() { return *sink_; }

    /// Completes the result and gives it its name. False if anything of it could not be written,
    /// which has then been told on standard error; a file that was there before is still there.
    [[nodiscard]] bool finish();

  private:
    bool takeName();

    std::unique_ptr<OutputSink> sink_;
    std::string partName_;  ///< empty where the result is written directly, or has its name
    std::string name_;
};

}  // namespace quillmark::a2ltool
