#pragma once

#include <concepts>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "quillmark/list.h"
#include "source.h"

namespace quillmark::python {

template <typename Item>
concept Named = requires(const Item& item) {
    { item.name() } -> std::same_as<std::string_view>;
};

/// The parts of something as Python walks and searches them.
class ItemList {
  public:
    ItemList() = default;
    ItemList(const ItemList&) = delete;
    ItemList& operator=(const ItemList&) = delete;
    virtual ~ItemList() = default;

    [[nodiscard]] virtual std::size_t size() const = 0;

    /// The item at a position below size().
    [[nodiscard]] virtual py::object at(std::size_t index) const = 0;

    /// The first item of a name; a null object for none.
    [[nodiscard]] virtual py::object find(std::string_view name) const = 0;
};

/// `Items` is a List of the items or a vector of them.
template <typename Item, typename Items = List<Item>>
class ListOf final : public ItemList {
  public:
    /// Finds an item quicker than a walk does.
    using Search = std::function<std::optional<Item>(std::string_view name)>;

    ListOf(SourcePointer source, Items items, Search search = {})
        : source_(std::move(source)), items_(std::move(items)), search_(std::move(search)) {}

    [[nodiscard]] std::size_t size() const override { return items_.size(); }
    [[nodiscard]] py::object at(std::size_t index) const override {
        return pythonItem(items_[index]);
    }

    [[nodiscard]] py::object find(std::string_view name) const override {
        if (search_) {
            const auto lock = holdForWork(*source_);
            const std::optional<Item> item = search_(name);
            return item ? pythonItem(*item) : py::object();
        }
        if constexpr (Named<Item>) {
            for (std::size_t i = 0; i < items_.size(); ++i) {
                if (items_[i].name() == name) {
                    return at(i);
                }
            }
        }
        return {};
    }

  private:
    [[nodiscard]] py::object pythonItem(const Item& item) const;

    SourcePointer source_;
    Items items_;
    Search search_;
};

template <typename Item>
py::object listOf(const SourcePointer& source, const List<Item>& items,
                  typename ListOf<Item>::Search search = {}) {
    std::shared_ptr<ItemList> list =
        std::make_shared<ListOf<Item>>(source, items, std::move(search));
    return py::cast(std::move(list));
}

void declareItemList(py::module_& module);

}  // namespace quillmark::python
