#include "errors.h"

#include <string>

#include "values.h"

namespace quillmark::python {
namespace {

py::object placeNumber(std::int32_t number) {
    return number > 0 ? py::object(py::int_(number)) : py::none();
}

/// "fan.a2l:12:3: error: text", with as much of the place as is known.
std::string lineOf(const PlainFinding& finding) {
    std::string text = finding.file;
    for (const std::int32_t number : {finding.line, finding.column}) {
        if (number > 0) {
            text.append(":").append(std::to_string(number));
        }
    }
    text.append(text.empty() ? "" : ": ").append(textOf(finding.severity));
    return text.append(": ").append(finding.text);
}

}  // namespace

PlainFindings plainFindings(const Findings& findings) {
    PlainFindings plain;
    for (const Finding& finding : findings) {
        plain.push_back({finding.severity(), std::string(finding.file()), finding.line(),
                         finding.column(), std::string(finding.text())});
    }
    return plain;
}

void raiseError(std::string_view message, const PlainFindings& findings) {
    const py::object type = py::module_::import("quillmark._error").attr("Error");
    const py::object error = type(pythonText(message), pythonFindings(findings));
    PyErr_SetObject(type.ptr(), error.ptr());
    throw py::error_already_set();
}

void raiseFirstError(const PlainFindings& findings, std::string_view message) {
    for (const PlainFinding& finding : findings) {
        if (finding.severity == Severity::Error) {
            raiseError(finding.file.empty() ? finding.text : lineOf(finding), findings);
        }
    }
    raiseError(message, findings);
}

py::tuple pythonFindings(const PlainFindings& findings) {
    py::tuple result(findings.size());
    for (std::size_t i = 0; i < findings.size(); ++i) {
        result[i] = py::cast(findings[i]);
    }
    return result;
}

void declareFinding(py::module_& module) {
    py::class_<PlainFinding>(module, "Finding", "One thing that the library has to say.")
        .def_property_readonly(
            "severity", [](const PlainFinding& self) { return pythonOf({}, self.severity); },
            "How bad it is.")
        .def_property_readonly(
            "file", [](const PlainFinding& self) { return pythonText(self.file); },
            "The description that it is about; empty for one about no place in a description.")
        .def_property_readonly(
            "line", [](const PlainFinding& self) { return placeNumber(self.line); },
            "The line of that place, counted from 1; None where there is none.")
        .def_property_readonly(
            "column", [](const PlainFinding& self) { return placeNumber(self.column); },
            "Where in the line, in bytes, counted from 1; None where nobody knows.")
        .def_property_readonly(
            "text", [](const PlainFinding& self) { return pythonText(self.text); },
            "What is wrong, without place and severity.")
        .def("__str__", [](const PlainFinding& self) { return pythonText(lineOf(self)); })
        .def("__repr__", [](const PlainFinding& self) {
            return pythonText("<quillmark.Finding " + lineOf(self) + ">");
        });
}

}  // namespace quillmark::python
