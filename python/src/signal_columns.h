#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "quillmark/description.h"
#include "quillmark/model.h"

namespace quillmark::python {

/// Numbers that may be absent. An absent real is NaN, an absent integer 0.
template <typename T>
struct NumberColumn {
    std::vector<T> values;
    std::vector<std::uint8_t> absent;  ///< 1 for an absent one

    void add(const std::optional<T>& value) {
        constexpr T kNothing =
            std::numeric_limits<T>::has_quiet_NaN ? std::numeric_limits<T>::quiet_NaN() : T{};
        values.push_back(value.value_or(kNothing));
        absent.push_back(value ? 0 : 1);
    }
};

/// Texts that occur again and again.
class CategoryColumn {
  public:
    /// An empty text is none.
    void add(std::string_view text);

    /// For each row which of the texts it has; -1 for none.
    [[nodiscard]] const std::vector<std::int32_t>& codes() const noexcept { return codes_; }
    [[nodiscard]] const std::vector<std::string_view>& texts() const noexcept { return texts_; }

  private:
    std::vector<std::int32_t> codes_;
    std::vector<std::string_view> texts_;
    std::unordered_map<std::string_view, std::int32_t> codeOf_;
};

/// The signals of all modules, one vector for each column of the table. The texts are views into
/// the description.
struct SignalColumns {
    CategoryColumn module;
    std::vector<std::string_view> name;
    CategoryColumn kind;
    NumberColumn<std::uint32_t> address;
    NumberColumn<std::int32_t> addressExtension;
    CategoryColumn baseType;
    std::vector<std::int64_t> sizeBits;
    CategoryColumn byteOrder;
    NumberColumn<std::uint32_t> bitMask;
    NumberColumn<double> lowerLimit;
    NumberColumn<double> upperLimit;
    CategoryColumn conversion;
    CategoryColumn unitText;

    explicit SignalColumns(const Description& description);

    /// Calls the visitor with the name and the content of each column, in the order of the table.
    template <typename Visitor>
    void visit(Visitor& visitor) const {
        visitor("module", module);
        visitor("name", name);
        visitor("kind", kind);
        visitor("address", address);
        visitor("address_extension", addressExtension);
        visitor("base_type", baseType);
        visitor("size_bits", sizeBits);
        visitor("byte_order", byteOrder);
        visitor("bit_mask", bitMask);
        visitor("lower_limit", lowerLimit);
        visitor("upper_limit", upperLimit);
        visitor("conversion", conversion);
        visitor("unit_text", unitText);
    }

  private:
    void add(const Module& ofModule, const Signal& signal);
};

}  // namespace quillmark::python
