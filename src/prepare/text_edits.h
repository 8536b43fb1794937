#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quillmark::preparing {

/// A change of some bytes of a text: those from `from` to `to` become others.
struct TextEdit {
    std::size_t from;
    std::size_t to;
    std::string text;
};

/// What is to be changed in a text that itself stays as it is until all is known.
class TextEdits {
  public:
    void replace(std::size_t from, std::size_t to, std::string text) {
        edits_.push_back({from, to, std::move(text)});
    }

    /// Takes words out of `text`, with the blanks before them, or their lines if they fill them.
    /// `beginsLine`: a line begins with the text.
    void takeOut(std::string_view text, std::size_t from, std::size_t to, bool beginsLine = true);

    [[nodiscard]] bool empty() const { return edits_.empty(); }
    void clear() { edits_.clear(); }

    /// Brings the edits into the order of the text. One that lies within another counts for
    /// nothing, and one that overlaps the one before it begins behind that.
    const std::vector<TextEdit>& sorted();

    /// The text with all changes made.
    std::string apply(std::string_view text);

  private:
    std::vector<TextEdit> edits_;
};

}  // namespace quillmark::preparing
