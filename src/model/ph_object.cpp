#include "model/ph_object.h"

#include "platform/compiler.h"

namespace quillmark {

namespace {

QM_QUICK_THREAD_LOCAL constinit thread_local std::uint32_t nextObjectId = 0;

std::uint32_t takeObjectId() {
    return nextObjectId++;
}

}  // namespace

PhObject::PhObject(PhClass kind) : objectId_(takeObjectId()), kind_(kind) {}

PhObject::~PhObject() = default;

void PhObject::release() {
    if (refCount_ > 0) {
        --refCount_;
    }
    if (refCount_ == 0) {
        delete this;
    }
}

std::vector<PhString>& PhObject::texts(std::size_t list) {
    if (texts_ == nullptr) {
        texts_ = std::make_unique<std::array<std::vector<PhString>, 2>>();
    }
    return texts_->at(list);
}

}  // namespace quillmark
