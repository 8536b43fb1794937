#pragma once

#include <cstddef>
#include <iterator>

#include "quillmark/export.h"

namespace quillmark {

struct ViewAccess;

/// The parts of something, in the order of the description. A list is a small value that looks at
/// the description, as its items are; both are valid as long as that lives and is not read anew.
/// Walking allocates nothing.
template <typename Item>
class QUILLMARK_API List {
  public:
    /// Reaches any item in constant time. The items are made while they are looked at, so it hands
    /// out values, not references.
    class Iterator {
      public:
        using iterator_category = std::input_iterator_tag;
        using value_type = Item;
        using difference_type = std::ptrdiff_t;
        using pointer = void;
        using reference = Item;

        Iterator() = default;
        Item operator*() const { return List(list_)[index_]; }
        Iterator& operator++() {
            ++index_;
            return *this;
        }
        Iterator operator++(int) {
            Iterator before = *this;
            ++index_;
            return before;
        }
        bool operator==(const Iterator&) const = default;

      private:
        friend class List;
        Iterator(const void* list, std::size_t index) : list_(list), index_(index) {}

        const void* list_ = nullptr;
        std::size_t index_ = 0;
    };

    /// An empty list.
    List() = default;

    [[nodiscard]] std::size_t size() const noexcept;
    [[nodiscard]] bool empty() const noexcept { return size() == 0; }

    /// The item at a position below size().
    [[nodiscard]] Item operator[](std::size_t index) const noexcept;

    [[nodiscard]] Iterator begin() const noexcept { return Iterator(list_, 0); }
    [[nodiscard]] Iterator end() const noexcept { return Iterator(list_, size()); }

  private:
    friend struct ViewAccess;
    explicit List(const void* list) noexcept : list_(list) {}

    const void* list_ = nullptr;
};

}  // namespace quillmark
