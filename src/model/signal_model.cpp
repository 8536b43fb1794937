#include "model/signal_model.h"

namespace quillmark {

PhConversion::Texts& PhConversion::texts() {
    if (texts_ == nullptr) {
        texts_ = std::make_unique<Texts>();
    }
    return *texts_;
}

PhEntity::Display& PhEntity::display() {
    if (display_ == nullptr) {
        display_ = std::make_unique<Display>();
    }
    return *display_;
}

PhEntity::Extras& PhEntity::extras() {
    if (extras_ == nullptr) {
        extras_ = std::make_unique<Extras>();
    }
    return *extras_;
}

}  // namespace quillmark
