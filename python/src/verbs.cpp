#include "verbs.h"

#include <exception>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "buffer.h"
#include "errors.h"
#include "quillmark/convert.h"
#include "quillmark/expand.h"
#include "reading.h"

namespace quillmark::python {
namespace {

/// What a conversion gave.
struct Converted {
    std::optional<std::string> includeFile;
    PlainFindings findings;
};

std::optional<std::string> fileNameIfAny(const py::object& path) {
    return path.is_none() ? std::nullopt : std::optional(fileName(path));
}

/// Seconds since 1970, and those by which the time zone is ahead. A time without a zone is local.
void setTime(ConvertOptions& options, const py::object& time) {
    const py::object local =
        time.attr("tzinfo").is_none() ? time.attr("astimezone")() : py::object(time);
    const double seconds = local.attr("timestamp")().cast<double>();
    const double offset = local.attr("utcoffset")().attr("total_seconds")().cast<double>();
    options.setTime(static_cast<std::int64_t>(seconds), static_cast<std::int32_t>(offset));
}

/// Takes the pieces of an include file. Ctrl-C ends an endless one.
class TextSink {
  public:
    explicit TextSink(std::string& text) : text_(text) {}

    bool operator()(std::string_view bytes) {
        text_ += bytes;
        const py::gil_scoped_acquire acquire;
        isInterrupted_ = PyErr_CheckSignals() != 0;
        if (isInterrupted_) {
            error_ = std::make_exception_ptr(py::error_already_set());
        }
        return !isInterrupted_;
    }

    void rethrow() const {
        if (error_) {
            std::rethrow_exception(error_);
        }
    }

  private:
    std::string& text_;
    bool isInterrupted_ = false;
    std::exception_ptr error_;
};

/// Where the result of a conversion goes.
struct Destination {
    std::optional<std::string> includeFile;
    std::optional<std::string> package;
};

/// The package is named after the include file where user files ask for one without naming it.
Destination destinationOf(const py::object& includeFile, const py::object& zpki,
                          const std::vector<std::string>& userFiles) {
    Destination destination{fileNameIfAny(includeFile), fileNameIfAny(zpki)};
    if (destination.package.has_value() || !userFiles.empty()) {
        if (!destination.includeFile) {
            throw py::value_error("a package needs the name of its include file");
        }
        if (!destination.package) {
            const py::object path = py::module_::import("pathlib").attr("PurePath")(includeFile);
            destination.package = fileName(path.attr("with_suffix")(".zpki"));
        }
    }
    return destination;
}

/// Does the work without the lock of the interpreter.
template <typename Work>
ConvertResult convertWithoutLock(Source& source, Work work) {
    const py::gil_scoped_release release;
    const std::lock_guard<std::mutex> lock(source.working);
    return work();
}

ConvertResult convertTo(const Destination& destination, Source& source,
                        const ConvertOptions& options, std::string& text) {
    const Description& description = source.description;
    if (destination.package) {
        return convertWithoutLock(source, [&] {
            return convertToPackage(description, options, *destination.includeFile,
                                    *destination.package);
        });
    }
    if (destination.includeFile) {
        return convertWithoutLock(
            source, [&] { return convertToFile(description, options, *destination.includeFile); });
    }
    TextSink sink(text);
    ConvertResult result = convertWithoutLock(
        source, [&] { return quillmark::convert(description, options, std::ref(sink)); });
    sink.rethrow();
    return result;
}

Converted convertVerb(const py::object& description, const py::object& includeFile, bool compress,
                      bool indent, const std::string& station, const std::string& prefix,
                      const std::string& library, const py::iterable& userFiles,
                      const py::object& zpki, bool epkFilePrefix, const py::object& versionFile,
                      const py::object& versions, const py::object& time, const py::object& user) {
    const std::vector<std::string> files = fileNames(userFiles, "userfiles");
    const Destination destination = destinationOf(includeFile, zpki, files);
    if (epkFilePrefix && files.empty()) {
        throw py::value_error("epk_file_prefix goes with userfiles");
    }
    ConvertOptions options;
    options.setCompress(compress).setIndent(indent).setStationName(station).setNamePrefix(prefix);
    options.setLibrary(library).setUserFiles(files).setEpkFilePrefix(epkFilePrefix);
    if (const auto file = fileNameIfAny(versionFile)) {
        options.setVersionFile(*file);
    }
    if (!versions.is_none()) {
        options.setVersions(versions.cast<std::string>());
    }
    if (!time.is_none()) {
        setTime(options, time);
    }
    if (!user.is_none()) {
        options.setUser(user.cast<std::string>());
    }
    const SourcePointer source = descriptionOf(description, ReadOptions().setKeepTexts(false));
    std::string text;
    const ConvertResult result = convertTo(destination, *source, options, text);
    Converted converted{std::nullopt, plainFindings(result.findings())};
    if (!result.isDone()) {
        raiseFirstError(converted.findings, "the include file is not made, or not completely");
    }
    if (!destination.includeFile) {
        converted.includeFile = std::move(text);
    }
    return converted;
}

void raiseIfFailed(ExpandStatus status) {
    switch (status) {
        case ExpandStatus::Done:
            return;
        case ExpandStatus::NotOpened:
            raiseError("the include file cannot be opened");
        case ExpandStatus::NotCompressed:
            raiseError("the include file has no compressed section");
        case ExpandStatus::OutputNotOpened:
            raiseError("the output cannot be opened");
        case ExpandStatus::NotWritten:
            break;
    }
    raiseError("the output could not be written completely");
}

py::bytes expandBytes(const py::object& includeFile) {
    const Buffer buffer(includeFile);
    std::string text;
    ExpandStatus status = ExpandStatus::NotCompressed;
    {
        const py::gil_scoped_release release;
        status = expand(buffer.bytes(), text);
    }
    raiseIfFailed(status);
    return py::bytes(text);
}

void expandFiles(const py::object& includeFile, const py::object& output) {
    const std::string from = fileName(includeFile);
    const std::string to = fileName(output);
    ExpandStatus status = ExpandStatus::NotOpened;
    {
        const py::gil_scoped_release release;
        status = expandFile(from, to);
    }
    if (status == ExpandStatus::NotOpened) {
        py::module_::import("io").attr("FileIO")(includeFile).attr("close")();
    }
    raiseIfFailed(status);
}

}  // namespace

void declareVerbs(py::module_& module) {
    py::class_<Converted>(module, "ConvertResult", "What a conversion gave.")
        .def_property_readonly(
            "include_file",
            [](const Converted& self) {
                return self.includeFile ? py::object(py::bytes(*self.includeFile)) : py::none();
            },
            "The bytes of the include file; None where they went into a file.")
        .def_property_readonly(
            "findings", [](const Converted& self) { return pythonFindings(self.findings); },
            "What there was to say, such as the library that was selected.")
        .def("__repr__", [](const Converted& self) {
            return self.includeFile ? "<quillmark.ConvertResult of " +
                                          std::to_string(self.includeFile->size()) + " bytes>"
                                    : std::string("<quillmark.ConvertResult in a file>");
        });
    module.def("convert", &convertVerb, py::arg("description"),
               py::arg("include_file") = py::none(), py::kw_only(), py::arg("compress") = false,
               py::arg("indent") = false, py::arg("station") = "", py::arg("prefix") = "",
               py::arg("library") = "", py::arg("userfiles") = py::tuple(),
               py::arg("zpki") = py::none(), py::arg("epk_file_prefix") = false,
               py::arg("version_file") = py::none(), py::arg("versions") = py::none(),
               py::arg("time") = py::none(), py::arg("user") = py::none(),
               "Makes the include file of a description, or of what read() takes.\n\n"
               "The keywords are the options of `quillmark convert`: compress (-z), indent (-i), "
               "station (-n), prefix (-p), library (-l), userfiles, zpki, epk_file_prefix. "
               "version_file is used in place of sigtrakVersions.xml in the current directory, "
               "versions is its content; time (a datetime) and user tell when and by whom it was "
               "made, by default now and by the login name. Raises quillmark.Error where it cannot "
               "be made.");
    module.def("_expand_bytes", &expandBytes);
    module.def("_expand_files", &expandFiles);
}

}  // namespace quillmark::python
