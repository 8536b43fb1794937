#include "model/signal_model.h"

namespace quillmark {

PhTableEntry::PhTableEntry(PhNumber lower, PhNumber upper, PhNumber output)
    : lower_(payload(lower)),
      upper_(payload(upper)),
      output_(payload(output)),
      lowerKind_(lower.kind()),
      upperKind_(upper.kind()),
      outputKind_(output.kind()) {}

PhTableEntry::PhTableEntry(PhNumber lower, PhNumber upper, PhString text)
    : lower_(payload(lower)),
      upper_(payload(upper)),
      output_(payload(PhNumber())),
      text_(std::move(text)),
      lowerKind_(lower.kind()),
      upperKind_(upper.kind()),
      outputKind_(PhNumber::Kind::None) {}

PhTableEntry::Payload PhTableEntry::payload(const PhNumber& value) {
    Payload result{};
    if (value.isReal()) {
        result.real = value.toReal();
    } else {
        result.integer = value.exactInteger();
    }
    return result;
}

PhNumber PhTableEntry::number(Payload value, PhNumber::Kind kind) {
    switch (kind) {
        case PhNumber::Kind::None:
            return {};
        case PhNumber::Kind::Integer:
            return PhNumber::integer(value.integer);
        case PhNumber::Kind::Real:
            return PhNumber::real(value.real);
    }
    return {};
}

PhEntity::Extras& PhEntity::extras() {
    if (extras_ == nullptr) {
        extras_ = std::make_unique<Extras>();
    }
    return *extras_;
}

}  // namespace quillmark
