#include "model_classes.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>
#include <string>

#include "buffer.h"
#include "conversion_calls.h"
#include "raw_value.h"
#include "view_class.h"

namespace quillmark::python {
namespace {

std::string hexadecimal(std::uint32_t value) {
    std::array<char, 12> text{};
    const int length = std::snprintf(text.data(), text.size(), "0x%08X", value);
    return {text.data(), static_cast<std::size_t>(length)};
}

std::string counted(std::size_t count, const char* what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

template <typename View>
std::string nameOf(const View& view) {
    return std::string(view.name());
}

std::string describeSignal(const Signal& signal) {
    std::string text(signal.name());
    if (!signal.isDefined()) {
        return text + ": not defined";
    }
    text.append(": ").append(textOf(signal.kind()));
    if (signal.baseType() != BaseType::Undefined) {
        text.append(" ").append(textOf(signal.baseType())).append(" of ");
        text.append(counted(static_cast<std::size_t>(signal.sizeBits()), "bit"));
    }
    if (const auto address = signal.address()) {
        text.append(" at ").append(hexadecimal(*address));
    }
    return text;
}

std::string describeConversion(const Conversion& conversion) {
    std::string text(conversion.name());
    text.append(": ");
    if (!conversion.isDefined()) {
        return text + "not defined";
    }
    text.append(textOf(conversion.kind()));
    return conversion.isTable() ? text + ", " + counted(conversion.rows().size(), "row") : text;
}

std::string describeModule(const Module& module) {
    return nameOf(module) + ": " + counted(module.signals().size(), "signal") + ", " +
           counted(module.conversions().size(), "conversion");
}

std::string describeProject(const Project& project) {
    return nameOf(project) + ": " + counted(project.modules().size(), "module");
}

/// The list that a function of the module gives, with the search of the module for it.
template <auto Getter, typename Search>
auto searchable(Search search) {
    return [search](const Held<Module>& self) {
        return listOf(
            self.source, std::invoke(Getter, self.view),
            [search, module = self.view](std::string_view name) { return search(module, name); });
    };
}

/// Calls `convert` for a value, or for each one in nested lists.
template <typename Convert>
py::object convertNested(const py::object& value, const Convert& convert) {
    if (!py::isinstance<py::list>(value)) {
        return convert(value);
    }
    py::list result;
    for (const py::handle element : value) {
        result.append(convertNested(py::reinterpret_borrow<py::object>(element), convert));
    }
    return result;
}

py::object decode(const Held<Signal>& self, const py::object& data, std::size_t offset,
                  bool physical) {
    const Buffer buffer(data);
    const std::string_view bytes = buffer.bytes();
    py::object raw = rawValue(self.view, bytes.substr(std::min(offset, bytes.size())));
    const auto conversion = self.view.conversion();
    if (!physical || !conversion || py::isinstance<py::str>(raw)) {
        return raw;
    }
    const Held<Conversion> held{self.source, *conversion, nullptr};
    const ConversionFunction& function = functionOf(held);
    return convertNested(raw,
                         [&](const py::object& value) { return physicalValue(function, value); });
}

py::tuple dimensionsOf(const Held<Signal>& self) {
    py::list sizes;
    for (const std::int32_t size : self.view.dimensions()) {
        if (size == 0) {
            break;
        }
        sizes.append(size);
    }
    return py::tuple(sizes);
}

py::object settingValue(const Held<Setting>& self) {
    switch (self.view.type()) {
        case Setting::Type::Integer:
        case Setting::Type::Real:
            return pythonNumber(self.view.number());
        case Setting::Type::Text:
            return pythonText(self.view.text());
        case Setting::Type::Bytes:
            return py::bytes(self.view.bytes().data(), self.view.bytes().size());
        case Setting::Type::List:
            return pythonOf(self.source, self.view.elements());
        case Setting::Type::None:
            break;
    }
    return py::none();
}

template <typename View>
void addNames(ViewClass<View>& view) {
    view.template attribute<&View::name>("name", "As the description has it.")
        .template attribute<&View::longIdentifier>(
            "long_identifier", "The explaining text behind the name; often empty.");
    if constexpr (requires(const View& item) { item.line(); }) {
        view.pythonClass().def_property_readonly(
            "line",
            [](const Held<View>& self) {
                const std::int32_t line = self.view.line();
                return line > 0 ? py::object(py::int_(line)) : py::none();
            },
            "Where its name stands in the description, counted from 1; None where it is not "
            "known.");
    }
}

constexpr const char* kIsDefined =
    "Whether the description defines what this name stands for, and does not only name it.";

void declareSetting(py::module_& module) {
    ViewClass<Setting> view(module, "Setting", "A named setting of a module, a protocol, ...");
    view.attribute<&Setting::name>("name", "Such as \"max_cto\"; may be empty within a list.")
        .representation([](const Setting& setting) { return nameOf(setting); });
    view.pythonClass().def_property_readonly(
        "value", &settingValue,
        "int, float, str, bytes, a List of further settings, or None for one without a value.");
}

void declareUnit(py::module_& module) {
    ViewClass<Unit> view(module, "Unit", "A physical unit.");
    addNames(view);
    view.attribute<&Unit::displayText>("display_text", "What to show, such as \"km/h\".")
        .attribute<&Unit::isDefined>("is_defined", kIsDefined)
        .representation([](const Unit& unit) {
            return nameOf(unit) + ": '" + std::string(unit.displayText()) + "'";
        });
}

void declareConversion(py::module_& module) {
    ViewClass<TableRow>(module, "TableRow", "A row of a conversion table.")
        .attribute<&TableRow::lower>("lower", "The lowest raw value of the row.")
        .attribute<&TableRow::upper>(
            "upper", "The highest raw value of the row; the same as the lowest for a single one.")
        .attribute<&TableRow::output>("output", "The physical value; None where it is a text.")
        .attribute<&TableRow::text>("text", "The text; None where the output is a number.")
        .representation([](const TableRow& row) {
            return std::to_string(row.lower().real()) + " to " + std::to_string(row.upper().real());
        });
    ViewClass<Conversion> view(module, "Conversion",
                               "How raw values become physical ones: a COMPU_METHOD, or one of the "
                               "tables that they name. To be called with raw values.");
    addNames(view);
    view.attribute<&Conversion::kind>("kind", "The kind of the formula; None if undefined.")
        .attribute<&Conversion::isTable>("is_table", "Whether it is a table by itself.")
        .attribute<&Conversion::isDefined>("is_defined", kIsDefined)
        .attribute<&Conversion::unit>("unit", "The unit of physical values, or None.")
        .attribute<&Conversion::coefficients>(
            "coefficients",
            "LINEAR: factor and offset. RAT_FUNC: physical = coefficients(raw) / "
            "denominator_coefficients(raw), highest power first, as turned round from COEFFS; both "
            "empty where those have no inverse of that form.")
        .attribute<&Conversion::denominatorCoefficients>("denominator_coefficients",
                                                         "See coefficients.")
        .attribute<&Conversion::formula>(
            "formula",
            "FORM: how to calculate the physical value, as the description writes it; empty "
            "otherwise.")
        .attribute<&Conversion::inverseFormula>(
            "inverse_formula", "FORM: the way back, where the description has one.")
        .attribute<&Conversion::displayFormat>(
            "display_format",
            "How many digits to show, such as \"%8.3\": all of them, and those behind the point.")
        .attribute<&Conversion::table>("table", "The table that a method names, or None.")
        .attribute<&Conversion::rows>("rows", "The rows of a table, empty for a method.")
        .attribute<&Conversion::defaultText>(
            "default_text", "What a table gives for all other values; None if it does not say.")
        .representation(&describeConversion);
    view.pythonClass()
        .def(
            "__call__",
            [](const Held<Conversion>& self, const py::object& raw) {
                return physicalValue(functionOf(self), raw);
            },
            py::arg("raw"),
            "The physical value of a raw one, or those of a NumPy array.\n\n"
            "A value that a table does not have gives its default text or None (in an array of "
            "numbers NaN). An interpolated table without a default text goes on with its first and "
            "its last value. Raises quillmark.Error for a conversion that cannot be calculated: a "
            "formula (FORM), a RAT_FUNC without an inverse, one that is not defined.")
        .def(
            "to_raw",
            [](const Held<Conversion>& self, const py::object& physical) {
                return rawValueOf(functionOf(self), physical);
            },
            py::arg("physical"),
            "The raw value of a physical one, or those of a NumPy array; not rounded. None (in an "
            "array NaN) for one that a table does not give; of several raw values the first.");
}

void declareSignal(py::module_& module) {
    py::class_<EventReference>(module, "EventReference", "An XCP event channel of a signal.")
        .def_property_readonly(
            "use", [](const EventReference& self) { return pythonOf({}, self.use); },
            "As what the signal names it.")
        .def_readonly("channel", &EventReference::channel, "Its number.")
        .def("__repr__", [](const EventReference& self) {
            return "<quillmark.EventReference " + std::to_string(self.channel) + ": " +
                   std::string(textOf(self.use)) + ">";
        });
    ViewClass<RecordLayout>(module, "RecordLayout", "How the values of a characteristic lie.")
        .attribute<&RecordLayout::name>("name", "As the description has it.")
        .attribute<&RecordLayout::isDefined>("is_defined", kIsDefined)
        .attribute<&RecordLayout::baseType>("base_type", "Of the stored function values, or None.")
        .attribute<&RecordLayout::sizeBits>("size_bits", "Of one value [bits]; 0 without any.")
        .representation([](const RecordLayout& layout) { return nameOf(layout); });

    ViewClass<Signal> view(module, "Signal", "A MEASUREMENT or a CHARACTERISTIC.");
    addNames(view);
    view.attribute<&Signal::kind>("kind", "What it is; None for one that is not defined.")
        .attribute<&Signal::isDefined>("is_defined", kIsDefined)
        .attribute<&Signal::address>(
            "address",
            "In the control unit, of an array that of its first element; None where the "
            "description gives none.")
        .attribute<&Signal::addressExtension>("address_extension", "None without one.")
        .attribute<&Signal::baseType>(
            "base_type", "How the bits of a value, or of one element of an array, are read.")
        .attribute<&Signal::sizeBits>(
            "size_bits", "Size of a value or element, of a text that of all [bits]; 0 if unknown.")
        .attribute<&Signal::byteOrder>(
            "byte_order", "That of the signal, otherwise that of its module, otherwise None.")
        .attribute<&Signal::bitMask>("bit_mask", "The bits that count; None for all.")
        .attribute<&Signal::bitOperation>("bit_operation", "Shift of the masked bits, or None.")
        .attribute<&Signal::shiftCount>("shift_count", "How far [bits].")
        .attribute<&Signal::signExtend>("sign_extend",
                                        "Whether a shift to the right keeps the sign.")
        .attribute<&Signal::layout>("layout", "How the elements of an array lie; None if not told.")
        .attribute<&Signal::lowerLimit>("lower_limit", "Of the physical value.")
        .attribute<&Signal::upperLimit>("upper_limit", "Of the physical value.")
        .attribute<&Signal::conversion>(
            "conversion", "How raw values become physical ones; None for NO_COMPU_METHOD.")
        .attribute<&Signal::unitText>("unit_text",
                                      "The unit as an include file has it; empty for none.")
        .attribute<&Signal::displayFormat>(
            "display_format",
            "How many digits to show where it is not as the conversion says; else empty.")
        .attribute<&Signal::recordLayout>("record_layout", "Of a characteristic; else None.")
        .attribute<&Signal::virtualMembers>("virtual_members",
                                            "The signals from which a virtual one is calculated.")
        .attribute<&Signal::events>("events", "The XCP event channels that it names.")
        .representation(&describeSignal);
    view.pythonClass()
        .def_property_readonly("dimensions", &dimensionsOf,
                               "Elements of an array in each dimension; empty for a single value.")
        .def("decode", &decode, py::arg("data"), py::kw_only(), py::arg("offset") = 0,
             py::arg("physical") = true,
             "The value of the signal that begins at an offset in the bytes, as they lie in the "
             "control unit: physical, or raw.\n\n"
             "Of an array these are nested lists: values[i][j] is what an include file calls "
             "name[i][j]; a text ends at its first zero. Raises ValueError for too few bytes, "
             "quillmark.Error for a curve, a map or another signal that is no plain value, and for "
             "a conversion that cannot be calculated.\n\n"
             "Mask, shift and byte order are those that the include file hands to the logger. As "
             "ASAM MCD-2 MC has it, the shift is applied to the masked value (BIT_OPERATION); "
             "LITTLE_ENDIAN in a description is an old word for MSB_FIRST and means that the high "
             "byte comes first, BIG_ENDIAN the contrary (BYTE_ORDER). Where a description leaves "
             "it open, this is a choice of decode alone: with a mask and no shift the lowest bit "
             "of the mask becomes that of the value, a masked value without SIGN_EXTEND has no "
             "sign, and without a byte order the low byte comes first.");
}

void declareGroups(py::module_& module) {
    ViewClass<Group> group(module, "Group", "A GROUP or FUNCTION.");
    addNames(group);
    group.attribute<&Group::isDefined>("is_defined", kIsDefined)
        .attribute<&Group::signals>("signals", "Members of all kinds.")
        .attribute<&Group::groups>("groups", "May contain each other in circles.")
        .representation([](const Group& view) {
            return nameOf(view) + ": " + counted(view.signals().size(), "signal");
        });
    ViewClass<Frame> frame(module, "Frame", "A FRAME: signals that are sent together.");
    addNames(frame);
    frame.attribute<&Frame::scalingUnit>("scaling_unit", "Code of the unit of `rate`.")
        .attribute<&Frame::rate>("rate", "How many of them lie between two transmissions.")
        .attribute<&Frame::signals>("signals", "In the order of the description.")
        .representation([](const Frame& view) {
            return nameOf(view) + ": " + counted(view.signals().size(), "signal");
        });
    ViewClass<MemorySegment> segment(module, "MemorySegment", "A memory segment or page.");
    addNames(segment);
    segment.attribute<&MemorySegment::use>("use", "What lies there; None for other uses.")
        .attribute<&MemorySegment::kind>("kind", "The kind of memory, or None.")
        .attribute<&MemorySegment::address>("address", "Of its first byte.")
        .attribute<&MemorySegment::addressExtension>("address_extension", "Of its first byte.")
        .attribute<&MemorySegment::size>("size", "[bytes]")
        .attribute<&MemorySegment::number>("number", "Number of a CCP page; 0 otherwise.")
        .representation([](const MemorySegment& view) {
            return nameOf(view) + ": " + counted(view.size(), "byte") + " at " +
                   hexadecimal(view.address());
        });
}

void declareModule(py::module_& module) {
    ViewClass<Module> view(module, "Module", "A MODULE: one control unit.");
    addNames(view);
    view.attribute<&Module::recordLayouts>("record_layouts", "Those that the module defines.")
        .attribute<&Module::frames>("frames", "Of FRAME blocks.")
        .attribute<&Module::memorySegments>("memory_segments", "And pages.")
        .attribute<&Module::protocols>("protocols", "How the control unit is reached.")
        .attribute<&Module::stationProtocol>(
            "station_protocol",
            "The protocol over which a converted station is measured; None for a module that a "
            "logger cannot reach.")
        .attribute<&Module::settings>("settings", "Of MOD_PAR.")
        .attribute<&Module::epk>("epk", "Identification of the program version, or None.")
        .attribute<&Module::epkAddress>("epk_address", "Where the control unit keeps it, or None.")
        .representation(&describeModule);
    const auto search = [](auto finder) {
        return [finder](const Module& searched, std::string_view name) {
            return std::invoke(finder, searched, name);
        };
    };
    view.pythonClass()
        .def_property_readonly("signals", searchable<&Module::signals>(search(&Module::findSignal)),
                               "Measurements and characteristics.")
        .def_property_readonly(
            "conversions",
            searchable<&Module::conversions>([](const Module& searched, std::string_view name) {
                auto found = searched.findConversion(name);
                return found ? found : searched.findTable(name);
            }),
            "Methods and tables. Searched by name, a method comes before a table.")
        .def_property_readonly("units", searchable<&Module::units>(search(&Module::findUnit)),
                               "Of UNIT blocks.")
        .def_property_readonly("groups", searchable<&Module::groups>(search(&Module::findGroup)),
                               "Groups and functions.");
}

}  // namespace

void declareModelClasses(py::module_& module) {
    declareSetting(module);
    declareUnit(module);
    declareConversion(module);
    declareSignal(module);
    declareGroups(module);
    declareModule(module);
    ViewClass<Project> project(module, "Project", "A PROJECT.");
    addNames(project);
    project.attribute<&Project::modules>("modules", "Most have one.")
        .representation(&describeProject);
}

}  // namespace quillmark::python
