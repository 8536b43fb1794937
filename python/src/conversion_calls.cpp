#include "conversion_calls.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include <pybind11/numpy.h>

#include "errors.h"
#include "values.h"

namespace quillmark::python {
namespace {

using Form = ConversionFunction::Form;
using Row = ConversionFunction::Row;
using Doubles = py::array_t<double, py::array::c_style | py::array::forcecast>;

/// NumPy need not be there: who has not imported it has no arrays.
bool isArray(const py::object& value) {
    const py::dict modules = py::module_::import("sys").attr("modules");
    return modules.contains("numpy") && py::isinstance(value, modules["numpy"].attr("ndarray"));
}

/// Raises TypeError for what is no number.
double doubleOf(const py::object& value) {
    const double number = PyFloat_AsDouble(value.ptr());
    if (number == -1.0 && PyErr_Occurred() != nullptr) {
        throw py::error_already_set();
    }
    return number;
}

Doubles doublesOf(const py::object& array) {
    const auto kind = array.attr("dtype").attr("kind").cast<std::string>();
    if (kind.find_first_of("biuf") == std::string::npos) {
        throw py::type_error("an array of real numbers is needed");
    }
    return Doubles::ensure(array);
}

/// Calculates each element, without the lock of the interpreter.
template <typename Calculate>
py::object forEach(const Doubles& input, Calculate calculate) {
    Doubles output(std::vector<py::ssize_t>(input.shape(), input.shape() + input.ndim()));
    const double* const from = input.data();
    double* const to = output.mutable_data();
    const auto count = static_cast<std::size_t>(input.size());
    {
        const py::gil_scoped_release release;
        std::transform(from, from + count, to, calculate);
    }
    return output;
}

py::object textOrNone(const std::optional<std::string>& text) {
    return text ? pythonText(*text) : py::none();
}

py::object outputOf(const ConversionFunction& function, const Row* row) {
    if (row == nullptr) {
        return textOrNone(function.defaultText());
    }
    return function.form() == Form::Texts ? pythonText(row->text) : pythonNumber(row->output);
}

/// An array of texts; each text is one object, however often it occurs.
py::object textsOf(const ConversionFunction& function, const Doubles& input) {
    const py::object numpy = py::module_::import("numpy");
    py::array texts = numpy.attr("empty")(input.attr("shape"), "O");
    const py::object flat = texts.attr("reshape")(-1);
    std::vector<std::pair<const Row*, py::object>> known;
    const py::object otherwise = textOrNone(function.defaultText());
    auto* const to = static_cast<PyObject**>(texts.mutable_data());
    for (py::ssize_t i = 0; i < input.size(); ++i) {
        const Row* const row = function.rowOf(input.data()[i]);
        py::object text = otherwise;
        if (row != nullptr) {
            const auto at = std::find_if(known.begin(), known.end(),
                                         [&](const auto& entry) { return entry.first == row; });
            text = at == known.end() ? known.emplace_back(row, pythonText(row->text)).second
                                     : at->second;
        }
        Py_XDECREF(to[i]);
        to[i] = text.release().ptr();
    }
    return texts;
}

const Row* rowGivingText(const ConversionFunction& function, const py::handle& text) {
    if (!py::isinstance<py::str>(text)) {
        throw py::type_error("the physical values of this conversion are texts");
    }
    if (const Row* const row = function.rowGiving(text.cast<std::string_view>())) {
        return row;
    }
    const auto latin = py::reinterpret_steal<py::bytes>(PyUnicode_AsLatin1String(text.ptr()));
    if (!latin) {
        PyErr_Clear();
        return nullptr;
    }
    return function.rowGiving(std::string_view(latin));
}

double lowerOf(const Row* row) {
    return row == nullptr ? kNoNumber : row->lower.real();
}

py::object rawOfTexts(const ConversionFunction& function, const py::object& array) {
    std::vector<double> raw;
    for (const py::handle text : array.attr("reshape")(-1).attr("tolist")()) {
        raw.push_back(lowerOf(rowGivingText(function, text)));
    }
    return Doubles(static_cast<py::ssize_t>(raw.size()), raw.data())
        .attr("reshape")(array.attr("shape"));
}

py::object physicalValues(const ConversionFunction& function, const py::object& raw) {
    const Doubles input = doublesOf(raw);
    switch (function.form()) {
        case Form::None:
        case Form::Identity:
            return raw;
        case Form::Texts:
            return textsOf(function, input);
        case Form::Numbers:
            return forEach(input, [&](double value) {
                const Row* const row = function.rowOf(value);
                return row == nullptr ? kNoNumber : row->output.real();
            });
        case Form::Fraction:
        case Form::Interpolated:
            break;
    }
    return forEach(input, [&](double value) { return function.physical(value); });
}

py::object rawValues(const ConversionFunction& function, const py::object& physical) {
    switch (function.form()) {
        case Form::Texts:
            return rawOfTexts(function, physical);
        case Form::Numbers:
            return forEach(doublesOf(physical),
                           [&](double value) { return lowerOf(function.rowGiving(value)); });
        case Form::None:
        case Form::Identity:
            doublesOf(physical);
            return physical;
        case Form::Fraction:
        case Form::Interpolated:
            break;
    }
    return forEach(doublesOf(physical), [&](double value) { return function.raw(value); });
}

}  // namespace

const ConversionFunction& functionOf(const Held<Conversion>& conversion) {
    if (conversion.function == nullptr) {
        conversion.function = std::make_shared<ConversionFunction>(conversion.view);
    }
    if (conversion.function->form() == Form::None) {
        raiseError("conversion " + std::string(conversion.view.name()) + " cannot be calculated");
    }
    return *conversion.function;
}

py::object physicalValue(const ConversionFunction& function, const py::object& raw) {
    if (isArray(raw)) {
        return physicalValues(function, raw);
    }
    const double value = doubleOf(raw);
    switch (function.form()) {
        case Form::None:
        case Form::Identity:
            return raw;
        case Form::Numbers:
        case Form::Texts:
            return outputOf(function, function.rowOf(value));
        case Form::Interpolated:
            if (const double output = function.physical(value); !std::isnan(output)) {
                return py::float_(output);
            }
            return textOrNone(function.defaultText());
        case Form::Fraction:
            break;
    }
    return py::float_(function.physical(value));
}

py::object rawValueOf(const ConversionFunction& function, const py::object& physical) {
    if (isArray(physical)) {
        return rawValues(function, physical);
    }
    if (function.form() == Form::Texts) {
        const Row* const row = rowGivingText(function, physical);
        return row == nullptr ? py::none() : pythonNumber(row->lower);
    }
    const double value = doubleOf(physical);
    switch (function.form()) {
        case Form::None:
        case Form::Identity:
        case Form::Texts:
            return physical;
        case Form::Numbers: {
            const Row* const row = function.rowGiving(value);
            return row == nullptr ? py::none() : pythonNumber(row->lower);
        }
        case Form::Interpolated: {
            const double raw = function.raw(value);
            return std::isnan(raw) ? py::object(py::none()) : py::float_(raw);
        }
        case Form::Fraction:
            break;
    }
    return py::float_(function.raw(value));
}

}  // namespace quillmark::python
