#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "quillmark/description.h"
#include "quillmark/export.h"

namespace quillmark {

struct DiffOptionsData;
struct DiffResultData;
struct ModelDifferenceData;
struct VerbAccess;

/// In what two descriptions differ.
enum class DiffKind : std::uint8_t {
    Incomparable,  ///< the settings of the protocols cannot be compared, or not to their end
    Setting,       ///< a setting of the protocols, as compare() finds it
    Name,          ///< the name of the project or module
    Removed,       ///< a signal or module that only the old description has
    Added,         ///< a signal or module that only the new one has
    Address,       ///< the address of a signal, or its extension
    Type,          ///< how the bytes of a signal are read
    Conversion,    ///< which conversion a signal has, or what a conversion calculates
    Unit,          ///< the unit of a signal
};
/// "incomparable", "setting", "name", "removed", "added", "address", "type", "conversion", "unit".
QUILLMARK_API std::string_view textOf(DiffKind kind) noexcept;

/// What it is that differs.
enum class DiffObject : std::uint8_t { Setting, Module, Signal, Conversion, Table };
/// "setting", "module", "signal", "conversion", "table".
QUILLMARK_API std::string_view textOf(DiffObject object) noexcept;

/// One difference between two descriptions. It owns its texts, which are in the encoding of the
/// descriptions; copies share them.
class QUILLMARK_API ModelDifference {
  public:
    [[nodiscard]] DiffKind kind() const noexcept;
    [[nodiscard]] DiffObject object() const noexcept;

    /// The module to which a signal, conversion or table belongs: that of the old description, or
    /// of the new one for what was added. Empty for a setting and for a module.
    [[nodiscard]] std::string_view module() const noexcept;

    /// Of what differs; for a setting what was compared, such as "daq capabilities:t1". Empty where
    /// `sentence` tells all.
    [[nodiscard]] std::string_view name() const noexcept;

    /// What was and what is: an address ("0xd0000011", with an extension "0xd0000011:1"), a type
    /// ("MEASUREMENT[4][2], unsigned, 16 bits, big"), the name of a conversion, what a conversion
    /// calculates ("LINEAR 2 1, km/h"), a unit; of a setting the value as compare() has it. What
    /// came or went has its address. Nothing where a description has none.
    [[nodiscard]] std::optional<std::string_view> oldValue() const noexcept;
    [[nodiscard]] std::optional<std::string_view> newValue() const noexcept;

    /// The sentence of compare() about a setting; empty otherwise.
    [[nodiscard]] std::string_view sentence() const noexcept;

    /// What `quillmark-a2l diff` prints behind the kind: "signal T_oil: 0xd0000011 -> 0xd0000014".
    [[nodiscard]] std::string summary() const;

    /// For the library itself.
    explicit ModelDifference(std::shared_ptr<const ModelDifferenceData> data) noexcept;

  private:
    std::shared_ptr<const ModelDifferenceData> data_;
};

/// Is told each difference at once, in the thread that does the work. Must not throw.
using DiffHandler = std::function<void(const ModelDifference& difference)>;

/// How descriptions are compared. Options are a value: copies are independent of each other.
class QUILLMARK_API DiffOptions {
  public:
    DiffOptions();
    DiffOptions(const DiffOptions& other);
    DiffOptions(DiffOptions&& other) noexcept;
    DiffOptions& operator=(DiffOptions other) noexcept;
    ~DiffOptions();

    /// Whether differences of a kind are passed over. At first none is.
    DiffOptions& setIgnored(DiffKind kind, bool ignored = true);

    /// With a handler, the result keeps no differences: there may be millions.
    DiffOptions& setHandler(DiffHandler handler);

  private:
    friend struct VerbAccess;
    std::unique_ptr<DiffOptionsData> data_;
};

/// What differs.
class QUILLMARK_API DiffResult {
  public:
    /// How many differences there are, those included that a handler was told.
    [[nodiscard]] std::size_t count() const noexcept;

    /// First the settings of the protocols, then module by module its conversions and its signals.
    /// Empty where a handler was told.
    [[nodiscard]] const std::vector<ModelDifference>& differences() const& noexcept;
    [[nodiscard]] std::vector<ModelDifference> differences() &&;

    /// For the library itself.
    explicit DiffResult(std::shared_ptr<const DiffResultData> data) noexcept;

  private:
    std::shared_ptr<const DiffResultData> data_;
};

/// Compares all that two complete descriptions say of settings, conversions and signals; what was
/// not kept when one was read counts as absent. Of several modules those of one name are compared,
/// of descriptions with one module each these two. A description that is not complete is a
/// difference of the kind Incomparable, and the only one.
///
/// Looks for signals by name in both, so it counts as a function that begins with `find`: it is for
/// one thread at a time on each description.
QUILLMARK_API DiffResult diff(const Description& oldDescription, const Description& newDescription,
                              const DiffOptions& options = {});

}  // namespace quillmark
