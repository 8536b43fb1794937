#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "model/ph_string.h"

namespace quillmark {

/// Shares short texts that a description repeats, such as the texts of verbal tables.
class TextPool {
  public:
    /// A string of that text; texts too long to be worth it are not shared.
    PhString share(std::string_view text);

  private:
    static constexpr std::size_t kLongestShared = 64;  // [bytes]

    void grow();

    std::vector<PhString> slots_;  ///< open addressing; a power of two, at most half full
    std::size_t used_ = 0;
};

}  // namespace quillmark
