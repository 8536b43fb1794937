#include "preparing.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "buffer.h"
#include "errors.h"
#include "quillmark/description.h"
#include "quillmark/prepare.h"
#include "reading.h"

namespace quillmark::python {
namespace {

/// What prepare() gave.
struct Prepared {
    std::optional<std::string> description;
    bool hasLosses = false;
    PlainFindings findings;
};

/// A file of this name, never the standard input or output.
std::string plainFileName(const py::object& path) {
    std::string name = fileName(path);
    return name == "-" ? "./-" : name;
}

PlainFinding plainFinding(const PrepareFinding& finding) {
    constexpr std::array kSeverities = {Severity::Note, Severity::Warning, Severity::Error};
    return {kSeverities[static_cast<std::size_t>(finding.kind)], std::string(finding.file),
            static_cast<std::int32_t>(finding.line), 0, std::string(finding.text)};
}

bool canBeRead(const ByteSource& description) {
    return Description::readStream(description, "").isComplete();
}

PrepareOptions makeOptions(const py::object& output, const py::iterable& includeDirectories,
                           bool skipMissing, const py::object& map, bool latin1,
                           const std::string& separator, bool blobArrays, std::uint64_t limit,
                           const std::string& epk, const std::string& epkAddress,
                           const std::string& module) {
    PrepareOptions options;
    options.setIncludeDirectories(fileNames(includeDirectories, "include_dir"));
    options.setSkipMissing(skipMissing);
    options.setLatin1(latin1).setSeparator(separator).setBlobArrays(blobArrays).setLimit(limit);
    options.setEpk(epk, epkAddress, module).setReader(&canBeRead);
    if (!output.is_none()) {
        options.setOutput(plainFileName(output));
    }
    if (!map.is_none()) {
        options.setMap(plainFileName(map));
    }
    return options;
}

/// Calls `prepare` with a handler that collects what it is told, without the lock of the
/// interpreter.
template <typename Prepare>
Prepared prepareWithoutLock(const Prepare& prepare) {
    Prepared prepared;
    PrepareResult result = PrepareResult::Failed;
    {
        const py::gil_scoped_release release;
        result = prepare([&prepared](const PrepareFinding& finding) {
            prepared.findings.push_back(plainFinding(finding));
        });
    }
    if (result == PrepareResult::Failed) {
        raiseFirstError(prepared.findings, "the description cannot be prepared");
    }
    prepared.hasLosses = result == PrepareResult::WithLoss;
    return prepared;
}

Prepared prepareFile(const py::object& path, const PrepareOptions& options) {
    const std::string input = plainFileName(path);
    return prepareWithoutLock(
        [&](const PrepareFindingHandler& tell) { return prepare(input, options, tell); });
}

/// `keepText`: the options name no output, and the result is wanted.
Prepared prepareBytes(const py::object& bytes, const py::object& name,
                      const PrepareOptions& options, bool keepText) {
    const Buffer buffer(bytes);
    const std::string calledName = fileName(name);
    std::string text;
    Prepared prepared = prepareWithoutLock([&](const PrepareFindingHandler& tell) {
        return prepareMemory(buffer.bytes(), calledName, options, text, tell);
    });
    if (keepText) {
        prepared.description = std::move(text);
    }
    return prepared;
}

}  // namespace

void declarePreparing(py::module_& module) {
    py::class_<Prepared>(module, "PrepareResult", "What became of a description.")
        .def_property_readonly(
            "description",
            [](const Prepared& self) {
                return self.description ? py::object(py::bytes(*self.description)) : py::none();
            },
            "The bytes of one that can be read; None where they went into a file or nowhere.")
        .def_property_readonly(
            "has_losses", [](const Prepared& self) { return self.hasLosses; },
            "Whether something could not be carried over.")
        .def_property_readonly(
            "findings", [](const Prepared& self) { return pythonFindings(self.findings); },
            "What was changed (a note) and what was lost (a warning), in the order of the "
            "description.")
        .def("__repr__", [](const Prepared& self) {
            return "<quillmark.PrepareResult, " + std::to_string(self.findings.size()) +
                   (self.findings.size() == 1 ? " finding" : " findings") +
                   (self.hasLosses ? ", with losses>" : ">");
        });
    py::class_<PrepareOptions>(module, "_PrepareOptions")
        .def(py::init(&makeOptions), py::kw_only(), py::arg("output"), py::arg("include_dir"),
             py::arg("skip_missing"), py::arg("map"), py::arg("latin1"), py::arg("separator"),
             py::arg("blob_arrays"), py::arg("limit"), py::arg("epk"), py::arg("epk_address"),
             py::arg("module"));
    module.def("_prepare_file", &prepareFile);
    module.def("_prepare_bytes", &prepareBytes);
}

}  // namespace quillmark::python
