#include "model/signal_model.h"

namespace quillmark {

PhEntity::Limits& PhEntity::limits() {
    if (limits_ == nullptr) {
        limits_ = std::make_unique<Limits>();
    }
    return *limits_;
}

PhEntity::Extras& PhEntity::extras() {
    if (extras_ == nullptr) {
        extras_ = std::make_unique<Extras>();
    }
    return *extras_;
}

}  // namespace quillmark
