#include "a2l/core_reader.h"

namespace quillmark {

void CoreReader::startOver() {
    BlockReader::startOver();
    errorCount_ = 0;
    moduleByteOrder_ = PhByteOrder::Undefined;
    moduleBlock_ = TOK_EOF;
}

PhHandle<PhUnit> CoreReader::inlineUnit(std::string_view text) {
    if (!parts().signals) {
        return {};
    }
    if (PhUnit* known = inlineUnits_.find(text)) {
        return PhHandle<PhUnit>(known);
    }
    auto unit = makePh<PhUnit>();
    unit->setName(PhString(text));
    unit->setDisplayText(unit->name());
    inlineUnits_.append(unit);
    return unit;
}

PhString CoreReader::readFormat() {
    return nextWord() == TOK_STRING && parts().formats ? shareText(token().text) : PhString();
}

}  // namespace quillmark
