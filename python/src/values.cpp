#include "values.h"

namespace quillmark::python {
namespace {

/// `last` is the last enumerator.
template <typename Enum>
void load(const py::module_& enumerations, const char* name, Enum last) {
    const py::object members = enumerations.attr(name);
    for (std::size_t code = 0; code <= static_cast<std::size_t>(last); ++code) {
        const std::string_view text = textOf(static_cast<Enum>(code));
        const py::object member = text.empty() ? py::object(py::none()) : members(py::str(text));
        enumMembers<Enum>.push_back(member.inc_ref());
    }
}

}  // namespace

py::object pythonText(std::string_view bytes) {
    const auto size = static_cast<Py_ssize_t>(bytes.size());
    PyObject* text = PyUnicode_DecodeUTF8(bytes.data(), size, nullptr);
    if (text == nullptr) {
        PyErr_Clear();
        text = PyUnicode_DecodeLatin1(bytes.data(), size, nullptr);
    }
    if (text == nullptr) {
        throw py::error_already_set();
    }
    return py::reinterpret_steal<py::object>(text);
}

py::object pythonNumber(const Number& number) {
    if (number.isInteger()) {
        return py::int_(number.integer());
    }
    return number.isReal() ? py::object(py::float_(number.real())) : py::none();
}

void loadEnumerations() {
    const py::module_ enumerations = py::module_::import("quillmark._enumerations");
    load(enumerations, "SignalKind", SignalKind::Cube5);
    load(enumerations, "ByteOrder", ByteOrder::LittleEndian);
    load(enumerations, "BaseType", BaseType::Ascii);
    load(enumerations, "BitOperation", BitOperation::RightShift);
    load(enumerations, "ArrayLayout", ArrayLayout::ColumnDirection);
    load(enumerations, "ConversionKind", ConversionKind::InterpolatedTable);
    load(enumerations, "ProtocolKind", ProtocolKind::Gmlan);
    load(enumerations, "TransportKind", TransportKind::FlexRay);
    load(enumerations, "MemoryKind", MemoryKind::Register);
    load(enumerations, "MemoryUse", MemoryUse::Parameters);
    load(enumerations, "EventUse", EventUse::Consistency);
    load(enumerations, "Severity", Severity::Error);
    load(enumerations, "DifferenceLevel", DifferenceLevel::Warning);
    load(enumerations, "DiffKind", DiffKind::Unit);
    load(enumerations, "DiffObject", DiffObject::Table);
}

}  // namespace quillmark::python
