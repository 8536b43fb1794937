#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "prepare/description_scanner.h"
#include "prepare/line_map.h"
#include "prepare/output.h"
#include "prepare/text_edits.h"

namespace quillmark::preparing {

/// Writes the parts of a description, as they are or changed, and gives their bytes away.
class PartWriter {
  public:
    /// `map` may be nullptr. With `latin1` everything goes out as ISO 8859-1.
    PartWriter(SourceText& source, Report& report, Output& output, LineMap* map, bool latin1)
        : source_(source), report_(report), output_(output), map_(map), latin1_(latin1) {}

    /// Copies bytes of the window.
    void copy(std::size_t from, std::size_t to);

    /// Writes bytes that were made for something at a place.
    void make(std::string_view bytes, Place place);

    /// Writes what tells the characters of the text.
    void putMark(std::string_view mark);

    /// Gives a part and what stands before it away.
    void discard(const Part& part) { source_.discard(part.end); }

    /// Copies what stands before a part, and the part itself, and gives both away.
    void pass(const Part& part);

    /// Writes what was not written yet of the parts that were passed. Everything else that writes
    /// does so before.
    void writePassed();

    /// Copies what stands before a part, and the part with its changes, and gives both away.
    void writeEdited(const Part& part, TextEdits& edits);

    /// Copies what stands before a part and gives the part away, with its line if it fills one.
    void takeOut(const Part& part);

    /// A line feed and the blanks before a part, for what is put behind it.
    [[nodiscard]] std::string indentation(const Part& part) const;

    /// Where a byte of a part comes from.
    [[nodiscard]] Place placeIn(const Part& part, std::size_t position) {
        return source_.placeOf(part.begin + position);
    }

    /// How many bytes were written.
    [[nodiscard]] std::uint64_t written() const { return written_; }

  private:
    void fetchRestOfLine(std::size_t position);
    void put(std::string_view bytes, Place place);
    void write(std::string_view bytes);

    SourceText& source_;
    Report& report_;
    Output& output_;
    LineMap* map_;
    bool latin1_;
    std::uint64_t written_ = 0;
    char last_ = '\n';  ///< the last byte that was written
    std::string converted_;
};

}  // namespace quillmark::preparing
