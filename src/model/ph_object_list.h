#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "model/ph_object.h"
#include "model/ph_string.h"
#include "platform/compiler.h"
#include "platform/equal_texts.h"
#include "platform/large_pages.h"

namespace quillmark {

/// Finds list positions by name. Where a name occurs more than once, only the position that comes
/// first is entered. The table doubles as it fills, and its hash spreads serial names, so that a
/// lookup among millions of names, or of one name millions of times, costs a probe or two.
class PhNameIndex {
  public:
    static constexpr std::uint32_t kNone = 0xFFFFFFFFU;
    /// How many lookups can be prepared together.
    static constexpr std::size_t kMostTogether = 16;

    explicit PhNameIndex(std::size_t expectedNames);

    /// Enters a name's hash unless `matches(position)` finds the name in one of the entries with
    /// that hash.
    template <typename Matches>
    void add(std::uint32_t hash, std::uint32_t position, Matches matches) {
        Slot& slot = slots_[slotOf(hash, matches)];
        if (slot.position == kNone) {
            slot = {hash, position};
            countNewEntry();
        }
    }

    /// Position of the entry that `matches(position)` accepts among those with the name's hash.
    template <typename Matches>
    std::uint32_t find(std::string_view name, Matches matches) const {
        return slots_[slotOf(hashOf(name), matches)].position;
    }

    static std::uint32_t hashOf(std::string_view name);

    /// Has the processor fetch where the search for a hash begins. Changes nothing.
    void prefetchSlot(std::uint32_t hash) const { prefetch(&slots_[hash & mask()]); }

    /// Position of the first entry with that hash, whatever its name.
    std::uint32_t candidate(std::uint32_t hash) const {
        const auto anyName = [](std::uint32_t) { return true; };
        return slots_[slotOf(hash, anyName)].position;
    }

  private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t position = kNone;
    };

    /// Where the entry is that matches, or else the free slot where it would be.
    template <typename Matches>
    std::size_t slotOf(std::uint32_t hash, Matches matches) const {
        std::size_t slot = hash & mask();
        while (slots_[slot].position != kNone &&
               !(slots_[slot].hash == hash && matches(slots_[slot].position))) {
            slot = (slot + 1) & mask();
        }
        return slot;
    }

    std::size_t mask() const { return slots_.size() - 1; }
    void countNewEntry();

    std::vector<Slot, LargePageAllocator<Slot>>
        slots_;  ///< a power of two, at most two thirds full
    std::size_t used_ = 0;
};

/// Ordered list of model objects, shared through handles, with a name index that is built at the
/// first lookup and kept up to date from then on.
template <typename T>
class PhObjectList {
  public:
    /// Walks the objects, not the handles.
    class Iterator {
      public:
        explicit Iterator(const PhHandle<T>* at) : at_(at) {}
        T& operator*() const { return **at_; }
        Iterator& operator++() {
            ++at_;
            return *this;
        }
        bool operator==(const Iterator&) const = default;

      private:
        const PhHandle<T>* at_;
    };

    Iterator begin() const { return Iterator(items_.data()); }
    Iterator end() const { return Iterator(items_.data() + items_.size()); }

    std::size_t count() const { return items_.size(); }
    bool empty() const { return items_.empty(); }
    T& at(std::size_t position) const { return *items_.at(position); }
    T& last() const { return *items_.back(); }

    /// The handle at a position, to be re-pointed by reference resolution. Re-pointing to an object
    /// of another name drops nothing from the index, so it is for lists that nobody searches.
    PhHandle<T>& handle(std::size_t position) { return items_.at(position); }

    /// Adds a non-empty handle at the end.
    void append(PhHandle<T> object) {
        items_.push_back(std::move(object));
        if (index_ != nullptr) {
            enterIntoIndex(items_.size() - 1, hashAt(items_.size() - 1));
        }
    }

    /// First object of that name in list order, or nullptr.
    T* find(std::string_view name) const {
        if (items_.empty()) {
            return nullptr;
        }
        const std::uint32_t position = index().find(name, hasName(name));
        return position == PhNameIndex::kNone ? nullptr : items_[position].get();
    }

    /// Gets ready for a find() of each of these names, PhNameIndex::kMostTogether at most. A lookup
    /// among millions of objects waits for memory four times in a row; here all names wait
    /// together. Changes nothing else.
    void prepareToFind(std::span<const std::string_view> names) const;

    /// Takes the object at a position out of the list and releases it.
    void remove(std::size_t position) {
        index_.reset();  // positions behind it move up
        items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(position));
    }

    /// Orders the list by `compare(left, right)` < 0, in the manner of the C library's qsort; a
    /// list of fewer than two elements is left untouched.
    void sort(int (*compare)(const T& left, const T& right)) {
        if (items_.size() < 2) {
            return;
        }
        std::stable_sort(items_.begin(), items_.end(),
                         [compare](const PhHandle<T>& left, const PhHandle<T>& right) {
                             return compare(*left, *right) < 0;
                         });
        if (index_ != nullptr) {
            buildIndex();
        }
    }

    void clear() {
        index_.reset();
        items_.clear();
    }

  private:
    const PhNameIndex& index() const {
        if (index_ == nullptr) {
            buildIndex();
        }
        // cppcheck-suppress nullPointerRedundantCheck ; buildIndex() has made it
        return *index_;
    }

    void buildIndex() const {
        index_ = std::make_unique<PhNameIndex>(items_.size());
        std::array<std::uint32_t, PhNameIndex::kMostTogether> hashes{};
        for (std::size_t start = 0; start < items_.size(); start += hashes.size()) {
            // As in prepareToFind(), all of them wait for memory together.
            const std::size_t count = std::min(hashes.size(), items_.size() - start);
            for (std::size_t i = 0; i < count; ++i) {
                hashes[i] = hashAt(start + i);
                index_->prefetchSlot(hashes[i]);
            }
            for (std::size_t i = 0; i < count; ++i) {
                enterIntoIndex(start + i, hashes[i]);
            }
        }
    }

    std::uint32_t hashAt(std::size_t position) const {
        return PhNameIndex::hashOf(items_[position]->name().view());
    }

    /// A null name is never found, and not entered.
    void enterIntoIndex(std::size_t position, std::uint32_t hash) const {
        const PhString& name = items_[position]->name();
        if (!name.isNull()) {
            index_->add(hash, static_cast<std::uint32_t>(position), hasName(name.view()));
        }
    }

    auto hasName(std::string_view name) const {
        return
            [this, name](std::uint32_t at) { return equalTexts(items_[at]->name().view(), name); };
    }

    std::vector<PhHandle<T>> items_;
    mutable std::unique_ptr<PhNameIndex> index_;  ///< made when it is first needed
};

template <typename T>
void PhObjectList<T>::prepareToFind(std::span<const std::string_view> names) const {
    if (items_.empty()) {
        return;
    }
    std::array<std::uint32_t, PhNameIndex::kMostTogether> hashes{};
    const std::size_t count = std::min(names.size(), hashes.size());
    for (std::size_t i = 0; i < count; ++i) {
        hashes[i] = PhNameIndex::hashOf(names[i]);
        index().prefetchSlot(hashes[i]);
    }
    std::array<const PhHandle<T>*, PhNameIndex::kMostTogether> found{};
    std::size_t foundCount = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t position = index().candidate(hashes[i]);
        if (position != PhNameIndex::kNone) {
            found[foundCount++] = &items_[position];
            prefetch(&items_[position]);
        }
    }
    for (std::size_t i = 0; i < foundCount; ++i) {
        prefetch(found[i]->get());
    }
    for (std::size_t i = 0; i < foundCount; ++i) {
        prefetch((*found[i])->name().text());
    }
}

}  // namespace quillmark
