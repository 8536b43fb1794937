#include "comparing.h"

#include <mutex>
#include <string>

#include "errors.h"
#include "quillmark/compare.h"
#include "reading.h"
#include "values.h"

namespace quillmark::python {
namespace {

CompareResult compareWithoutLock(Source& older, Source& newer) {
    const py::gil_scoped_release release;
    if (&older == &newer) {
        const std::lock_guard<std::mutex> lock(older.working);
        return compare(older.description, newer.description);
    }
    const std::scoped_lock lock(older.working, newer.working);
    return compare(older.description, newer.description);
}

py::list compareVerb(const py::object& older, const py::object& newer) {
    const ReadOptions options = ReadOptions().setKeepTexts(false).setKeepSignals(false);
    const SourcePointer oldSource = descriptionOf(older, options);
    const SourcePointer newSource = descriptionOf(newer, options);
    const CompareResult result = compareWithoutLock(*oldSource, *newSource);
    py::list differences;
    for (const Difference& difference : result.differences()) {
        if (difference.level() == DifferenceLevel::CannotCompare) {
            raiseError(difference.text(), plainFindings(result.findings()));
        }
        differences.append(py::cast(difference));
    }
    return differences;
}

void declareDifference(py::module_& module) {
    py::class_<Difference>(module, "Difference",
                           "One difference in how two control units are measured.")
        .def_property_readonly(
            "level", [](const Difference& self) { return pythonOf({}, self.level()); },
            "ERROR: a logger that was set up for the old one cannot measure the new one.")
        .def_property_readonly(
            "what", [](const Difference& self) { return pythonText(self.what()); },
            "What was compared, such as \"max_cto\".")
        .def_property_readonly(
            "old", [](const Difference& self) { return pythonText(self.oldValue()); },
            "The old value as the program shows it.")
        .def_property_readonly(
            "new", [](const Difference& self) { return pythonText(self.newValue()); },
            "The new value as the program shows it.")
        .def_property_readonly(
            "text", [](const Difference& self) { return pythonText(self.text()); },
            "The sentence of the program's report.")
        .def("__str__", [](const Difference& self) { return pythonText(self.text()); })
        .def("__repr__", [](const Difference& self) {
            return pythonText("<quillmark.Difference " + std::string(textOf(self.level())) + ": " +
                              std::string(self.text()) + ">");
        });
}

}  // namespace

void declareComparing(py::module_& module) {
    declareDifference(module);
    module.def("compare", &compareVerb, py::arg("old"), py::arg("new"),
               "The differences in how the control units of two descriptions, or of what read() "
               "takes, are measured, in the order in which they were found.\n\n"
               "Signals are not compared. Raises quillmark.Error for descriptions that cannot be "
               "compared.");
}

}  // namespace quillmark::python
