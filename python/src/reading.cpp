#include "reading.h"

#include <cstring>
#include <exception>
#include <functional>
#include <vector>

#include "buffer.h"
#include "errors.h"
#include "signal_table.h"
#include "values.h"

namespace quillmark::python {
namespace {

/// Gives what the read() of a binary file gives. An exception ends the text, and is kept.
class FileReader {
  public:
    explicit FileReader(const py::object& file) : read_(file.attr("read")) {}

    std::size_t operator()(char* buffer, std::size_t size) {
        const py::gil_scoped_acquire acquire;
        try {
            const py::object piece = read_(size);
            const Buffer bytes(piece);
            if (bytes.bytes().size() > size) {
                throw py::value_error("read() gave more bytes than it was asked for");
            }
            std::memcpy(buffer, bytes.bytes().data(), bytes.bytes().size());
            return bytes.bytes().size();
        } catch (...) {
            error_ = std::current_exception();
            return 0;
        }
    }

    void rethrow() const {
        if (error_) {
            std::rethrow_exception(error_);
        }
    }

  private:
    py::object read_;
    std::exception_ptr error_;
};

/// Raises the OSError that Python has for the file.
[[noreturn]] void raiseNotOpened(const py::object& path) {
    py::module_::import("io").attr("FileIO")(path).attr("close")();
    raiseError("the file cannot be opened");
}

Description readPath(const py::object& path, const ReadOptions& options) {
    const std::string file = fileName(path);
    Description description;
    {
        const py::gil_scoped_release release;
        description = Description::readFile(file, options);
    }
    if (description.status() == ReadStatus::NotOpened) {
        raiseNotOpened(path);
    }
    return description;
}

Description readBytes(const py::object& bytes, const std::string& name,
                      const ReadOptions& options) {
    const Buffer buffer(bytes);
    const py::gil_scoped_release release;
    return Description::readMemory(buffer.bytes(), name.empty() ? "<bytes>" : name, options);
}

Description readFileObject(const py::object& file, const std::string& name,
                           const ReadOptions& options) {
    std::string givenName = name;
    if (givenName.empty()) {
        const py::object own = py::getattr(file, "name", py::none());
        givenName = py::isinstance<py::str>(own) ? fileName(own) : "<file>";
    }
    FileReader reader(file);
    Description description;
    {
        const py::gil_scoped_release release;
        description = Description::readStream(std::ref(reader), givenName, options);
    }
    reader.rethrow();
    return description;
}

Description readAny(const py::object& source, const std::string& name, const ReadOptions& options) {
    if (py::isinstance<py::str>(source) || py::hasattr(source, "__fspath__")) {
        return readPath(source, options);
    }
    if (PyObject_CheckBuffer(source.ptr()) != 0) {
        return readBytes(source, name, options);
    }
    if (py::hasattr(source, "read")) {
        return readFileObject(source, name, options);
    }
    throw py::type_error("a description is read from a path, from bytes or from a binary file");
}

/// The modules of all projects.
py::object allModules(const SourcePointer& source) {
    std::vector<Module> modules;
    for (const Project project : source->description.projects()) {
        for (const Module module : project.modules()) {
            modules.push_back(module);
        }
    }
    std::shared_ptr<ItemList> list =
        std::make_shared<ListOf<Module, std::vector<Module>>>(source, std::move(modules));
    return py::cast(std::move(list));
}

std::string representation(const Source& source) {
    std::size_t signals = 0;
    std::size_t modules = 0;
    for (const Project project : source.description.projects()) {
        for (const Module module : project.modules()) {
            signals += module.signals().size();
            ++modules;
        }
    }
    std::string text = "<quillmark.Description ";
    text.append(source.description.name()).append(": ").append(std::to_string(modules));
    text.append(modules == 1 ? " module, " : " modules, ").append(std::to_string(signals));
    text.append(signals == 1 ? " signal" : " signals");
    return text.append(source.description.isComplete() ? ">" : ", not complete>");
}

}  // namespace

std::string fileName(const py::object& path) {
    return py::module_::import("os").attr("fsencode")(path).cast<std::string>();
}

std::vector<std::string> fileNames(const py::iterable& paths, const std::string& what) {
    if (py::isinstance<py::str>(paths) || py::isinstance<py::bytes>(paths)) {
        throw py::type_error(what + " is a list of paths");
    }
    std::vector<std::string> names;
    for (const py::handle path : paths) {
        names.push_back(fileName(py::reinterpret_borrow<py::object>(path)));
    }
    return names;
}

SourcePointer readSource(const py::object& source, const std::string& name,
                         const ReadOptions& options, bool strict) {
    auto result = std::make_shared<Source>();
    result->description = readAny(source, name, options);
    if (strict && !result->description.isComplete()) {
        raiseFirstError(plainFindings(result->description.findings()),
                        "the description cannot be read");
    }
    return result;
}

SourcePointer descriptionOf(const py::object& source, const ReadOptions& options) {
    if (py::isinstance<Source>(source)) {
        return source.cast<SourcePointer>();
    }
    return readSource(source, {}, options, true);
}

void declareReading(py::module_& module) {
    py::class_<Source, SourcePointer>(module, "Description",
                                      "An A2L description (ASAM MCD-2 MC) in memory.")
        .def_property_readonly(
            "name", [](const Source& self) { return pythonText(self.description.name()); },
            "The name under which it was read.")
        .def_property_readonly(
            "findings",
            [](const Source& self) {
                return pythonFindings(plainFindings(self.description.findings()));
            },
            "What was found while it was read.")
        .def_property_readonly(
            "is_complete", [](const Source& self) { return self.description.isComplete(); },
            "Whether it was read without an error, though perhaps with warnings.")
        .def_property_readonly(
            "reached_end", [](const Source& self) { return self.description.reachedEnd(); },
            "Whether the whole text was looked at, and no error ended the reading.")
        .def_property_readonly(
            "has_utf8_mark", [](const Source& self) { return self.description.hasUtf8Mark(); },
            "Whether the text began with the mark of UTF-8.")
        .def_property_readonly(
            "projects",
            [](const SourcePointer& self) { return listOf(self, self->description.projects()); },
            "Most descriptions have one.")
        .def_property_readonly("modules", &allModules, "The modules of all projects.")
        .def(
            "to_pandas",
            [](const py::object& self) {
                return py::module_::import("quillmark._tables").attr("to_pandas")(self);
            },
            "The signals of all modules as a pandas.DataFrame, one row each, in the order of the "
            "description. Raises ImportError without pandas.\n\n"
            "Columns: module, name, kind, address, address_extension, base_type, size_bits [bits], "
            "byte_order, bit_mask, lower_limit, upper_limit (physical), conversion (its name), "
            "unit_text. What the description does not tell is missing in its row.")
        .def(
            "to_arrow",
            [](const py::object& self) {
                return py::module_::import("quillmark._tables").attr("to_arrow")(self);
            },
            "The same signals and columns as a pyarrow.Table. Raises ImportError without pyarrow.")
        .def(
            "__arrow_c_stream__",
            [](const SourcePointer& self, const py::object& /*requestedSchema*/) {
                return signalStream(self);
            },
            py::arg("requested_schema") = py::none(),
            "The table of to_arrow() in a capsule, for every package that takes tables by the "
            "Arrow PyCapsule interface. The types are always the same.")
        .def("__repr__", [](const Source& self) { return pythonText(representation(self)); });
    module.def("_signal_columns", &signalColumns);
    module.def(
        "read",
        [](const py::object& source, bool strict, std::size_t errorLimit, bool texts,
           const std::string& name) {
            ReadOptions options;
            options.setKeepTexts(texts).setErrorLimit(errorLimit);
            return readSource(source, name, options, strict);
        },
        py::arg("source"), py::kw_only(), py::arg("strict") = true, py::arg("error_limit") = 1,
        py::arg("texts") = true, py::arg("name") = "",
        "Reads a description from a path, from bytes or from a binary file.\n\n"
        "An error raises quillmark.Error; with strict=False it gives what was read in spite of it. "
        "Reading ends with the first error, or with as many as error_limit says: it then goes on "
        "behind the block of the module in which an error stood, where that is possible. "
        "texts=False leaves out the long identifiers, which are a sixth of the memory. The name is "
        "what findings and include files call bytes or a file. Raises OSError for a file that "
        "cannot be opened.");
}

}  // namespace quillmark::python
