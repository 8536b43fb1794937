#include "a2l/recovery.h"

#include <algorithm>
#include <string>

namespace quillmark {
namespace {

using namespace kw::core;

/// The place that is looked for.
class PlaceToGoOn {
  public:
    /// The parse has failed at the reader's last token.
    PlaceToGoOn(CoreReader& reader, Rules<CoreReader, PhGroup> blocks)
        : reader_(reader), blocks_(blocks), lastWord_(reader.token().text) {}

    /// Whether `kind`, the last token, is the name in the `/end` of what failed: of a block that is
    /// known, or of one whose name was the unexpected token.
    bool isEndOfFailed(int kind) const {
        const int failed = reader_.moduleBlock();
        return failed == TOK_EOF ? reader_.token().text == lastWord_ : kind == failed;
    }

    /// Whether a block of that name can't be part of what failed. Interface blocks stand in many
    /// others, though not in each other.
    bool isBlockOfModule(int kind) const {
        if (kind == IF_DATA) {
            return reader_.moduleBlock() == IF_DATA;
        }
        return std::any_of(blocks_.begin(), blocks_.end(), [&](const auto& rule) {
            return rule.form() == Form::Block && rule.keyword() == kind;
        });
    }

    /// What the token at which the parse has failed was, if it opens or ends a block.
    int failedMark() const { return lastWord_ == "/begin" ? BEGIN : lastWord_ == "/end" ? END : 0; }

  private:
    const CoreReader& reader_;
    Rules<CoreReader, PhGroup> blocks_;
    std::string lastWord_;
};

}  // namespace

int resumeInModule(CoreReader& reader, Rules<CoreReader, PhGroup> blocks) {
    const PlaceToGoOn place(reader, blocks);
    if (!reader.goOn()) {
        return TOK_ERROR;
    }
    int mark = place.failedMark();
    int kind = reader.next();
    const bool anythingFollows = kind != TOK_EOF;
    for (; kind != TOK_EOF && kind != TOK_ERROR; kind = reader.next()) {
        if (mark == END && place.isEndOfFailed(kind)) {
            reader.setModuleBlock(TOK_EOF);
            return reader.next();
        }
        if ((mark == END && kind == MODULE) || (mark == BEGIN && place.isBlockOfModule(kind))) {
            reader.setModuleBlock(TOK_EOF);
            reader.repeat(kind);
            return mark;
        }
        mark = kind;
    }
    return reader.giveUp(anythingFollows);
}

}  // namespace quillmark
