#include "model/ph_object_list.h"

#include <bit>
#include <cstring>

namespace quillmark {

namespace {

constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15ULL;

std::uint64_t mix(std::uint64_t hash, std::uint64_t word) {
    hash = (hash ^ word) * kMultiplier;
    return hash ^ (hash >> 32U);
}

}  // namespace

PhNameIndex::PhNameIndex(std::size_t expectedNames)
    : slots_(std::bit_ceil(std::max<std::size_t>(64, expectedNames + expectedNames / 2 + 1))) {}

std::uint32_t PhNameIndex::hashOf(std::string_view name) {
    std::uint64_t hash = name.size();
    const char* at = name.data();
    std::size_t left = name.size();
    for (; left >= sizeof(std::uint64_t); left -= sizeof(std::uint64_t)) {
        std::uint64_t word = 0;
        std::memcpy(&word, at, sizeof word);
        hash = mix(hash, word);
        at += sizeof word;
    }
    if (left != 0) {
        std::uint64_t word = 0;
        std::memcpy(&word, at, left);
        hash = mix(hash, word);
    }
    return static_cast<std::uint32_t>(mix(hash, 0) >> 16U);
}

void PhNameIndex::countNewEntry() {
    ++used_;
    if (used_ * 3 <= slots_.size() * 2) {
        return;
    }
    std::vector<Slot, LargePageAllocator<Slot>> old(slots_.size() * 2);
    old.swap(slots_);
    const auto isNoOther = [](std::uint32_t) { return false; };  // every entry has its own name
    for (const Slot& entry : old) {
        if (entry.position != kNone) {
            slots_[slotOf(entry.hash, isNoOther)] = entry;
        }
    }
}

}  // namespace quillmark
