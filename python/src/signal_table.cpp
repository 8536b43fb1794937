#include "signal_table.h"

#include <cstdint>
#include <limits>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <pybind11/numpy.h>

#include "values.h"

namespace quillmark::python {
namespace {

template <typename T>
py::array_t<T> arrayOf(const std::vector<T>& values) {
    return py::array_t<T>(static_cast<py::ssize_t>(values.size()), values.data());
}

/// Numbers that may be absent.
template <typename T>
struct Numbers {
    std::vector<T> values;
    std::vector<std::uint8_t> mask;  ///< 1 for an absent one

    void add(const std::optional<T>& value) {
        values.push_back(value.value_or(0));
        mask.push_back(value ? 0 : 1);
    }
    [[nodiscard]] py::object column() const {
        return py::make_tuple(arrayOf(values), arrayOf(mask).attr("astype")("bool"));
    }
};

/// Texts that occur again and again; an empty one is none.
class Categories {
  public:
    void add(std::string_view text) {
        std::int32_t code = -1;
        if (!text.empty()) {
            const auto next = static_cast<std::int32_t>(texts_.size());
            const auto [known, isNew] = codeOf_.try_emplace(text, next);
            if (isNew) {
                texts_.push_back(text);
            }
            code = known->second;
        }
        codes_.push_back(code);
    }
    [[nodiscard]] py::object column() const {
        py::list categories;
        for (const std::string_view text : texts_) {
            categories.append(pythonText(text));
        }
        return py::make_tuple(arrayOf(codes_), categories);
    }

  private:
    std::vector<std::int32_t> codes_;
    std::vector<std::string_view> texts_;
    std::unordered_map<std::string_view, std::int32_t> codeOf_;
};

double realOf(const Number& number) {
    return number.isPresent() ? number.real() : std::numeric_limits<double>::quiet_NaN();
}

/// One vector for each column, in the order of the table.
struct Columns {
    Categories module;
    py::list name;
    Categories kind;
    Numbers<std::uint32_t> address;
    Numbers<std::int32_t> addressExtension;
    Categories baseType;
    std::vector<std::int64_t> sizeBits;
    Categories byteOrder;
    Numbers<std::uint32_t> bitMask;
    std::vector<double> lowerLimit;
    std::vector<double> upperLimit;
    Categories conversion;
    Categories unitText;

    void add(const Module& ofModule, const Signal& signal) {
        module.add(ofModule.name());
        name.append(pythonText(signal.name()));
        kind.add(textOf(signal.kind()));
        address.add(signal.address());
        addressExtension.add(signal.addressExtension());
        baseType.add(textOf(signal.baseType()));
        sizeBits.push_back(signal.sizeBits());
        byteOrder.add(textOf(signal.byteOrder()));
        bitMask.add(signal.bitMask());
        lowerLimit.push_back(realOf(signal.lowerLimit()));
        upperLimit.push_back(realOf(signal.upperLimit()));
        const auto signalConversion = signal.conversion();
        conversion.add(signalConversion ? signalConversion->name() : std::string_view());
        unitText.add(signal.unitText());
    }

    [[nodiscard]] py::dict table() const {
        py::dict columns;
        columns["module"] = module.column();
        columns["name"] = name;
        columns["kind"] = kind.column();
        columns["address"] = address.column();
        columns["address_extension"] = addressExtension.column();
        columns["base_type"] = baseType.column();
        columns["size_bits"] = arrayOf(sizeBits);
        columns["byte_order"] = byteOrder.column();
        columns["bit_mask"] = bitMask.column();
        columns["lower_limit"] = arrayOf(lowerLimit);
        columns["upper_limit"] = arrayOf(upperLimit);
        columns["conversion"] = conversion.column();
        columns["unit_text"] = unitText.column();
        return columns;
    }
};

}  // namespace

py::dict signalColumns(const SourcePointer& source) {
    Columns columns;
    for (const Project project : source->description.projects()) {
        for (const Module module : project.modules()) {
            for (const Signal signal : module.signals()) {
                columns.add(module, signal);
            }
        }
    }
    return columns.table();
}

}  // namespace quillmark::python
