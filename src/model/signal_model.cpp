#include "model/signal_model.h"

namespace quillmark {

PhEntity::Extras& PhEntity::extras() {
    if (extras_ == nullptr) {
        extras_ = std::make_unique<Extras>();
    }
    return *extras_;
}

}  // namespace quillmark
