#include "a2l/text_pool.h"

#include <utility>

#include "model/ph_object_list.h"

namespace quillmark {

PhString TextPool::share(std::string_view text) {
    if (text.size() > kLongestShared) {
        return PhString(text);
    }
    if (used_ * 2 >= slots_.size()) {
        grow();
    }
    std::size_t slot = PhNameIndex::hashOf(text) & (slots_.size() - 1);
    while (!slots_[slot].isNull()) {
        if (slots_[slot].view() == text) {
            return slots_[slot];
        }
        slot = (slot + 1) & (slots_.size() - 1);
    }
    slots_[slot] = PhString(text);
    ++used_;
    return slots_[slot];
}

void TextPool::grow() {
    std::vector<PhString> old(slots_.empty() ? 256 : slots_.size() * 2);
    old.swap(slots_);
    for (PhString& text : old) {
        if (text.isNull()) {
            continue;
        }
        std::size_t slot = PhNameIndex::hashOf(text.view()) & (slots_.size() - 1);
        while (!slots_[slot].isNull()) {
            slot = (slot + 1) & (slots_.size() - 1);
        }
        slots_[slot] = std::move(text);
    }
}

}  // namespace quillmark
