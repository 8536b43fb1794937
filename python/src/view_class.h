#pragma once

#include <bit>
#include <cstdint>
#include <functional>
#include <string>
#include <type_traits>

#include "values.h"

namespace quillmark::python {

/// What a view looks at; two views of the same thing are equal. A view is a pointer and no more.
template <typename View>
std::uintptr_t identityOf(const View& view) {
    static_assert(std::is_trivially_copyable_v<View> && sizeof(View) == sizeof(std::uintptr_t));
    return std::bit_cast<std::uintptr_t>(view);
}

/// Declares the Python class of a view.
template <typename View>
class ViewClass {
  public:
    using Self = Held<View>;

    ViewClass(py::module_& module, const char* name, const char* documentation)
        : class_(module, name, documentation) {
        class_.def(
            "__eq__",
            [](const Self& self, const Self& other) {
                return identityOf(self.view) == identityOf(other.view);
            },
            py::is_operator());
        class_.def("__hash__", [](const Self& self) {
            return std::hash<std::uintptr_t>()(identityOf(self.view));
        });
    }

    /// An attribute that is what a function of the view returns.
    template <auto Getter>
    ViewClass& attribute(const char* name, const char* documentation) {
        class_.def_property_readonly(
            name,
            [](const Self& self) { return pythonOf(self.source, std::invoke(Getter, self.view)); },
            documentation);
        return *this;
    }

    /// The text within "<quillmark.Class ...>".
    ViewClass& representation(std::string (*text)(const View& view)) {
        class_.def("__repr__", [text](const py::object& self) {
            const auto name = self.get_type().attr("__name__").cast<std::string>();
            return pythonText("<quillmark." + name + " " + text(self.cast<const Self&>().view) +
                              ">");
        });
        return *this;
    }

    py::class_<Self>& pythonClass() { return class_; }

  private:
    py::class_<Self> class_;
};

}  // namespace quillmark::python
