#include "item_list.h"

#include <string>

namespace quillmark::python {
namespace {

struct ItemIterator {
    std::shared_ptr<ItemList> list;
    std::size_t next = 0;
};

/// A name may stand in the description in either of the encodings that texts are read in.
py::object find(const ItemList& list, const py::str& name) {
    if (py::object item = list.find(name.cast<std::string_view>())) {
        return item;
    }
    const auto latin = py::reinterpret_steal<py::bytes>(PyUnicode_AsLatin1String(name.ptr()));
    if (!latin) {
        PyErr_Clear();
        return {};
    }
    return list.find(std::string_view(latin));
}

py::object itemAt(const ItemList& list, py::ssize_t index) {
    const auto size = static_cast<py::ssize_t>(list.size());
    const py::ssize_t position = index < 0 ? index + size : index;
    if (position < 0 || position >= size) {
        throw py::index_error("there are " + std::to_string(size) + " items");
    }
    return list.at(static_cast<std::size_t>(position));
}

py::list itemsAt(const ItemList& list, const py::slice& slice) {
    std::size_t start = 0;
    std::size_t stop = 0;
    std::size_t step = 0;
    std::size_t count = 0;
    if (!slice.compute(list.size(), &start, &stop, &step, &count)) {
        throw py::error_already_set();
    }
    py::list items(count);
    for (std::size_t i = 0; i < count; ++i) {
        items[i] = list.at(start);
        start += step;
    }
    return items;
}

bool contains(const ItemList& list, const py::object& item) {
    if (py::isinstance<py::str>(item)) {
        return static_cast<bool>(find(list, item));
    }
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (list.at(i).equal(item)) {
            return true;
        }
    }
    return false;
}

std::string representation(const ItemList& list) {
    constexpr std::size_t kShown = 3;
    std::string text = "<quillmark.List of " + std::to_string(list.size());
    for (std::size_t i = 0; i < list.size() && i < kShown; ++i) {
        text.append(i == 0 ? ": " : ", ").append(py::repr(list.at(i)).cast<std::string>());
    }
    return text.append(list.size() > kShown ? ", ...>" : ">");
}

}  // namespace

void declareItemList(py::module_& module) {
    py::class_<ItemIterator>(module, "_ListIterator")
        .def("__iter__", [](py::object self) { return self; })
        .def("__next__", [](ItemIterator& self) {
            if (self.next == self.list->size()) {
                throw py::stop_iteration();
            }
            return self.list->at(self.next++);
        });
    py::class_<ItemList, std::shared_ptr<ItemList>>(
        module, "List",
        "The parts of something, in the order of the description. Each item is made when it is "
        "looked at.")
        .def("__len__", &ItemList::size)
        .def("__getitem__", &itemAt, py::arg("index"))
        .def("__getitem__", &itemsAt, py::arg("slice"))
        .def(
            "__getitem__",
            [](const ItemList& self, const py::str& name) {
                py::object item = find(self, name);
                if (!item) {
                    throw py::key_error(name.cast<std::string>());
                }
                return item;
            },
            py::arg("name"), "The first item of this name.")
        .def(
            "get",
            [](const ItemList& self, const py::str& name, const py::object& otherwise) {
                py::object item = find(self, name);
                return item ? item : otherwise;
            },
            py::arg("name"), py::arg("default") = py::none(),
            "The first item of this name, or the default.")
        .def("__contains__", &contains, "Whether there is this item, or one of this name.")
        .def("__iter__", [](const std::shared_ptr<ItemList>& self) { return ItemIterator{self}; })
        .def("__repr__", &representation);
}

}  // namespace quillmark::python
