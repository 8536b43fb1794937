#include "signal_table.h"

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include <pybind11/numpy.h>

#include "arrow_stream.h"
#include "signal_columns.h"
#include "values.h"

namespace quillmark::python {
namespace {

SignalColumns columnsOf(const Source& source) {
    const py::gil_scoped_release release;
    return SignalColumns(source.description);
}

py::list textsOf(const std::vector<std::string_view>& texts) {
    py::list list(texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i) {
        list[i] = pythonText(texts[i]);
    }
    return list;
}

template <typename T>
py::array_t<T> arrayOf(const std::vector<T>& values) {
    return py::array_t<T>(static_cast<py::ssize_t>(values.size()), values.data());
}

/// Puts each column into a dict of arrays.
class NumpyColumns {
  public:
    void operator()(const char* name, const CategoryColumn& column) {
        columns_[name] = py::make_tuple(arrayOf(column.codes()), textsOf(column.texts()));
    }
    void operator()(const char* name, const std::vector<std::string_view>& texts) {
        columns_[name] = textsOf(texts);
    }
    void operator()(const char* name, const std::vector<std::int64_t>& values) {
        columns_[name] = arrayOf(values);
    }
    void operator()(const char* name, const NumberColumn<double>& column) {
        columns_[name] = arrayOf(column.values);
    }
    template <typename T>
    void operator()(const char* name, const NumberColumn<T>& column) {
        columns_[name] =
            py::make_tuple(arrayOf(column.values), arrayOf(column.absent).attr("astype")("bool"));
    }

    [[nodiscard]] const py::dict& columns() const { return columns_; }

  private:
    py::dict columns_;
};

bool isAscii(std::string_view text) {
    unsigned char bits = 0;
    for (const char byte : text) {
        bits |= static_cast<unsigned char>(byte);
    }
    return bits <= 0x7F;
}

/// Appends a text in the encoding that Arrow asks for.
void appendUtf8(std::vector<char>& to, std::string_view text) {
    if (isAscii(text)) {
        to.insert(to.end(), text.begin(), text.end());
        return;
    }
    const py::object decoded = pythonText(text);
    Py_ssize_t size = 0;
    const char* const bytes = PyUnicode_AsUTF8AndSize(decoded.ptr(), &size);
    if (bytes == nullptr) {
        throw py::error_already_set();
    }
    to.insert(to.end(), bytes, bytes + size);
}

/// Texts one behind the other, and where each one begins.
ArrowNode textNode(const std::vector<std::string_view>& texts) {
    std::vector<std::int64_t> offsets{0};
    std::vector<char> bytes;
    for (const std::string_view text : texts) {
        appendUtf8(bytes, text);
        offsets.push_back(static_cast<std::int64_t>(bytes.size()));
    }
    ArrowNode node{.format = "U", .length = static_cast<std::int64_t>(texts.size())};
    node.buffers = {nullptr, arrowBuffer(std::move(offsets)), arrowBuffer(std::move(bytes))};
    return node;
}

template <typename T>
constexpr const char* kArrowFormat = nullptr;
template <>
constexpr const char* kArrowFormat<std::int32_t> = "i";
template <>
constexpr const char* kArrowFormat<std::uint32_t> = "I";
template <>
constexpr const char* kArrowFormat<std::int64_t> = "l";
template <>
constexpr const char* kArrowFormat<double> = "g";

template <typename T>
ArrowNode numberNode(const std::vector<T>& values) {
    ArrowNode node{.format = kArrowFormat<T>, .length = static_cast<std::int64_t>(values.size())};
    node.buffers = {nullptr, arrowBuffer(values)};
    return node;
}

/// Makes each column a child of the struct that Arrow has for a table.
class ArrowColumns {
  public:
    void operator()(const char* name, const CategoryColumn& column) {
        ArrowNode node = numberNode(column.codes());
        node.setAbsent([&](std::size_t row) { return column.codes()[row] < 0; });
        node.dictionary = std::make_unique<ArrowNode>(textNode(column.texts()));
        add(name, std::move(node));
    }
    void operator()(const char* name, const std::vector<std::string_view>& texts) {
        add(name, textNode(texts));
    }
    void operator()(const char* name, const std::vector<std::int64_t>& values) {
        add(name, numberNode(values));
    }
    template <typename T>
    void operator()(const char* name, const NumberColumn<T>& column) {
        ArrowNode node = numberNode(column.values);
        node.setAbsent([&](std::size_t row) { return column.absent[row] != 0; });
        add(name, std::move(node));
    }

    [[nodiscard]] ArrowNode takeTable() { return std::move(table_); }

  private:
    void add(const char* name, ArrowNode column) {
        column.name = name;
        table_.length = column.length;
        table_.children.push_back(std::move(column));
    }

    ArrowNode table_{.format = "+s", .buffers = {nullptr}};
};

}  // namespace

py::dict signalColumns(const SourcePointer& source) {
    NumpyColumns columns;
    columnsOf(*source).visit(columns);
    return columns.columns();
}

py::capsule signalStream(const SourcePointer& source) {
    ArrowColumns columns;
    columnsOf(*source).visit(columns);
    return arrowStream(columns.takeTable());
}

}  // namespace quillmark::python
