#include "comparing.h"

#include <algorithm>
#include <cstddef>
#include <mutex>
#include <string>

#include "errors.h"
#include "quillmark/compare.h"
#include "quillmark/diff.h"
#include "reading.h"
#include "values.h"

namespace quillmark::python {
namespace {

/// Does the work on both descriptions without the lock of the interpreter.
template <typename Work>
auto withBoth(Source& older, Source& newer, const Work& work) {
    const py::gil_scoped_release release;
    if (&older == &newer) {
        const std::lock_guard<std::mutex> lock(older.working);
        return work(older.description, newer.description);
    }
    const std::scoped_lock lock(older.working, newer.working);
    return work(older.description, newer.description);
}

py::list compareVerb(const py::object& older, const py::object& newer) {
    const ReadOptions options = ReadOptions().setKeepTexts(false).setKeepSignals(false);
    const SourcePointer oldSource = descriptionOf(older, options);
    const SourcePointer newSource = descriptionOf(newer, options);
    const CompareResult result = withBoth(
        *oldSource, *newSource,
        [](const Description& before, const Description& after) { return compare(before, after); });
    py::list differences;
    for (const Difference& difference : result.differences()) {
        if (difference.level() == DifferenceLevel::CannotCompare) {
            raiseError(difference.text(), plainFindings(result.findings()));
        }
        differences.append(py::cast(difference));
    }
    return differences;
}

/// Each kind is a DiffKind or its word.
DiffOptions ignoring(const py::iterable& kinds) {
    const py::object type = py::module_::import("quillmark._enumerations").attr("DiffKind");
    DiffOptions options;
    for (const py::handle each : kinds) {
        const py::object kind = type(each);
        const auto& members = enumMembers<DiffKind>;
        const auto member = std::find_if(members.begin(), members.end(),
                                         [&](py::handle known) { return known.is(kind); });
        options.setIgnored(static_cast<DiffKind>(member - members.begin()));
    }
    return options;
}

py::list diffVerb(const py::object& older, const py::object& newer, const py::iterable& ignore) {
    const DiffOptions options = ignoring(ignore);
    const ReadOptions reading = ReadOptions().setKeepTexts(false);
    const SourcePointer oldSource = descriptionOf(older, reading);
    const SourcePointer newSource = descriptionOf(newer, reading);
    const DiffResult result =
        withBoth(*oldSource, *newSource, [&](const Description& before, const Description& after) {
            return diff(before, after, options);
        });
    py::list differences(result.differences().size());
    for (std::size_t i = 0; i < result.differences().size(); ++i) {
        differences[i] = py::cast(result.differences()[i]);
    }
    return differences;
}

std::string lineOf(const ModelDifference& difference) {
    return std::string(textOf(difference.kind())) + ": " + difference.summary();
}

void declareModelDifference(py::module_& module) {
    py::class_<ModelDifference>(module, "ModelDifference", "One difference of two descriptions.")
        .def_property_readonly(
            "kind", [](const ModelDifference& self) { return pythonOf({}, self.kind()); },
            "What has happened.")
        .def_property_readonly(
            "object", [](const ModelDifference& self) { return pythonOf({}, self.object()); },
            "To what it has happened.")
        .def_property_readonly(
            "module", [](const ModelDifference& self) { return pythonText(self.module()); },
            "The module of a signal, conversion or table; empty otherwise.")
        .def_property_readonly(
            "name", [](const ModelDifference& self) { return pythonText(self.name()); },
            "Of what differs; of a setting what was compared, such as \"daq capabilities:t1\". "
            "Empty where the sentence tells all.")
        .def_property_readonly(
            "old", [](const ModelDifference& self) { return pythonOf({}, self.oldValue()); },
            "What was, as a text such as \"0xd0000011\"; None where there was none.")
        .def_property_readonly(
            "new", [](const ModelDifference& self) { return pythonOf({}, self.newValue()); },
            "What is; None where there is none.")
        .def_property_readonly(
            "sentence", [](const ModelDifference& self) { return pythonText(self.sentence()); },
            "What compare() says about a setting; empty otherwise.")
        .def("__str__", [](const ModelDifference& self) { return pythonText(lineOf(self)); })
        .def("__repr__", [](const ModelDifference& self) {
            return pythonText("<quillmark.ModelDifference " + lineOf(self) + ">");
        });
}

void declareDifference(py::module_& module) {
    py::class_<Difference>(module, "Difference",
                           "One difference in how two control units are measured.")
        .def_property_readonly(
            "level", [](const Difference& self) { return pythonOf({}, self.level()); },
            "ERROR: a logger that was set up for the old one cannot measure the new one.")
        .def_property_readonly(
            "what", [](const Difference& self) { return pythonText(self.what()); },
            "What was compared, such as \"daq capabilities:t1\"; empty where the descriptions "
            "cannot be compared.")
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
    declareModelDifference(module);
    module.def("compare", &compareVerb, py::arg("old"), py::arg("new"),
               "The differences in how the control units of two descriptions, or of what read() "
               "takes, are measured, in the order in which they were found.\n\n"
               "Signals are not compared. Raises quillmark.Error for descriptions that cannot be "
               "compared.");
    module.def(
        "diff", &diffVerb, py::arg("old"), py::arg("new"), py::kw_only(),
        py::arg("ignore") = py::tuple(),
        "All differences of two descriptions, or of what read() takes: those that compare() "
        "finds, then module by module those of conversions and signals, which came, went or "
        "have another address, type, conversion or unit.\n\n"
        "Kinds (DiffKind, or their words) are passed over by `ignore`. What was not kept when "
        "a description was read counts as absent.");
}

}  // namespace quillmark::python
