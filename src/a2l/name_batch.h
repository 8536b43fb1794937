#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "model/ph_object_list.h"

namespace quillmark {

/// Names between their text and their objects, kept until there are enough of them to be looked up
/// together (PhObjectList::prepareToFind).
class NameBatch {
  public:
    bool isFull() const { return count_ == ends_.size(); }

    /// Adds a copy of a name; not to a full batch.
    void add(std::string_view name) {
        text_ += name;
        ends_[count_++] = text_.size();
    }

    /// Hands the names over in the order in which they came, and is empty afterwards: first all of
    /// them to `prepare(names)`, then each to `take(name)`.
    template <typename Prepare, typename Take>
    void handOver(Prepare prepare, Take take) {
        std::array<std::string_view, kCapacity> names;
        std::size_t begin = 0;
        for (std::size_t i = 0; i < count_; ++i) {
            names[i] = std::string_view(text_).substr(begin, ends_[i] - begin);
            begin = ends_[i];
        }
        const std::span batch(names.data(), count_);
        prepare(std::span<const std::string_view>(batch));
        for (const std::string_view name : batch) {
            take(name);
        }
        text_.clear();
        count_ = 0;
    }

  private:
    static constexpr std::size_t kCapacity = PhNameIndex::kMostTogether;

    std::string text_;  ///< all of them, without anything in between
    std::array<std::size_t, kCapacity> ends_{};
    std::size_t count_ = 0;
};

}  // namespace quillmark
