#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "prepare/report.h"

namespace quillmark::preparing {

/// Which line of the output comes from which line of which file.
class LineMap {
  public:
    /// Bytes of a file, which begin at that place.
    void addCopied(std::string_view bytes, Place place) { add(bytes, place, true); }

    /// Bytes that were made for something at that place.
    void addMade(std::string_view bytes, Place place) { add(bytes, place, false); }

    /// Rows of first line, number of lines, file and its first line, parted by tabulators.
    [[nodiscard]] std::string text(const Report& report) const;

  private:
    struct Row {
        std::uint64_t line;
        std::uint64_t count;
        Place place;
        bool isCopied;
    };

    void add(std::string_view bytes, Place place, bool isCopied);
    void addLines(std::uint64_t count, Place place, bool isCopied);

    std::vector<Row> rows_;
    std::uint64_t line_ = 1;
    bool atLineStart_ = true;
};

}  // namespace quillmark::preparing
