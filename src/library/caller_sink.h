#pragma once

#include <string_view>

#include "platform/output_sink.h"
#include "quillmark/bytes.h"

namespace quillmark {

/// Hands the bytes to a caller, who may have had enough of them.
class CallerSink final : public OutputSink {
  public:
    /// `sink` outlives this object.
    explicit CallerSink(const ByteSink& sink) : sink_(sink) {}

  protected:
    void drain(std::string_view bytes) override {
        if (ok() && !sink_(bytes)) {
            fail();
        }
    }

  private:
    const ByteSink& sink_;
};

}  // namespace quillmark
