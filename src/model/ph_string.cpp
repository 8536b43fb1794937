#include "model/ph_string.h"

#include <algorithm>
#include <cstring>
#include <new>  // IWYU pragma: keep, for placement
#include <utility>

#include "model/model_memory.h"

namespace quillmark {

namespace {

/// Bytes of a record with its text and terminator.
constexpr std::size_t allocationSize(std::size_t length) {
    return 2 * sizeof(std::uint32_t) + length + 1;
}

}  // namespace

PhString::Record* PhString::emptyRecord() {
    // Shared by all empty texts and never counted, so it is constant in all but type.
    struct EmptyText {
        Record record;
        char terminator;
    };
    static constinit EmptyText empty{{kImmortal, 0}, '\0'};
    return &empty.record;
}

PhString::Record* PhString::allocate(std::size_t length) {
    void* memory = ModelMemory::allocate(allocationSize(length));
    auto* record = new (memory) Record{1, static_cast<std::uint32_t>(length)};
    characters(record)[length] = '\0';
    return record;
}

PhString::PhString(std::string_view text) {
    text = text.substr(0, kLongest);
    if (text.empty()) {
        record_ = emptyRecord();
        return;
    }
    record_ = allocate(text.size());
    std::memcpy(characters(record_), text.data(), text.size());
}

PhString::PhString(std::string_view prefix, std::string_view text) {
    prefix = prefix.substr(0, kLongest);
    text = text.substr(0, kLongest - prefix.size());
    const std::size_t length = prefix.size() + text.size();
    if (length == 0) {
        record_ = emptyRecord();
        return;
    }
    record_ = allocate(length);
    char* target = std::copy(prefix.begin(), prefix.end(), characters(record_));
    std::copy(text.begin(), text.end(), target);
}

PhString::PhString(const PhString& other) noexcept : record_(other.record_) {
    if (record_ != nullptr && record_->count != kImmortal) {
        ++record_->count;
    }
}

PhString& PhString::operator=(PhString other) noexcept {
    std::swap(record_, other.record_);
    return *this;
}

PhString::~PhString() {
    if (record_ != nullptr && record_->count != kImmortal && --record_->count == 0) {
        ModelMemory::release(record_, allocationSize(record_->length));
    }
}

std::uint32_t PhString::hash() const {
    std::uint32_t hash = 0;
    for (const char c : view()) {
        hash = static_cast<unsigned char>(c) + 2U * hash;
    }
    return hash;
}

std::strong_ordering operator<=>(const PhString& left, const PhString& right) {
    if (left.isNull() || right.isNull()) {
        return static_cast<int>(left.isNull()) <=> static_cast<int>(right.isNull());
    }
    return left.view().compare(right.view()) <=> 0;
}

bool operator==(const PhString& left, const PhString& right) {
    return (left <=> right) == std::strong_ordering::equal;
}

}  // namespace quillmark
