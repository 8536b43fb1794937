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

template <typename Word>
Word load(const char* bytes) {
    Word word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

}  // namespace

PhNameIndex::PhNameIndex(std::size_t expectedNames)
    : slots_(std::bit_ceil(std::max<std::size_t>(64, expectedNames + expectedNames / 2 + 1))) {}

std::uint32_t PhNameIndex::hashOf(std::string_view name) {
    const char* at = name.data();
    const char* const end = at + name.size();
    std::uint64_t hash = name.size();
    if (name.size() >= sizeof(std::uint64_t)) {
        // The last word overlaps the one before it rather than being filled up byte by byte.
        const char* const lastWord = end - sizeof(std::uint64_t);
        for (; at < lastWord; at += sizeof(std::uint64_t)) {
            hash = mix(hash, load<std::uint64_t>(at));
        }
        hash = mix(hash, load<std::uint64_t>(lastWord));
    } else if (name.size() >= sizeof(std::uint32_t)) {
        const std::uint64_t lastHalf = load<std::uint32_t>(end - sizeof(std::uint32_t));
        hash = mix(hash, lastHalf << 32U | load<std::uint32_t>(at));
    } else {
        for (; at < end; ++at) {
            hash = mix(hash, static_cast<unsigned char>(*at));
        }
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
