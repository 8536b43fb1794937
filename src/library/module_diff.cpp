#include "library/module_diff.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "library/conversion_diff.h"
#include "library/shown_signal.h"
#include "quillmark/model.h"

namespace quillmark {
namespace {

std::vector<Module> modulesOf(const Description& description) {
    std::vector<Module> modules;
    for (const Project& project : description.projects()) {
        for (const Module& module : project.modules()) {
            modules.push_back(module);
        }
    }
    return modules;
}

/// The module among the others that has the name of modules[index]; of several in several projects
/// the one that is as far behind the first of them. nullptr if there is none.
const Module* findNamesake(const std::vector<Module>& modules, std::size_t index,
                           const std::vector<Module>& others) {
    const std::string_view name = modules[index].name();
    const auto hasName = [&](const Module& module) { return module.name() == name; };
    auto before = std::count_if(modules.begin(),
                                modules.begin() + static_cast<std::ptrdiff_t>(index), hasName);
    for (const Module& other : others) {
        if (hasName(other) && before-- == 0) {
            return &other;
        }
    }
    return nullptr;
}

/// The comparison of one module with another.
class ModuleDiff {
  public:
    ModuleDiff(const Module& oldModule, const Module& newModule, const DifferenceTaker& take)
        : oldModule_(oldModule), newModule_(newModule), name_(oldModule.name()), take_(take) {}

    /// Most signals of a new release stand where they stood. So both lists are walked side by side,
    /// and a name is only looked up where they part.
    void compareSignals() {
        const List<Signal> oldSignals = oldModule_.signals();
        const List<Signal> newSignals = newModule_.signals();
        std::size_t i = 0;
        std::size_t j = 0;
        while (i < oldSignals.size() && j < newSignals.size()) {
            const Signal oldSignal = oldSignals[i];
            const Signal newSignal = newSignals[j];
            if (oldSignal.name() == newSignal.name()) {
                compare(oldSignal, newSignal);
                ++i;
                ++j;
            } else if (isAdded(newSignal)) {
                tellAdded(newSignal);
                ++j;
            } else if (const auto partner = newModule_.findSignal(oldSignal.name())) {
                // Both are in either module: the order has changed.
                compare(oldSignal, *partner);
                ++i;
                ++j;
            } else {
                tellRemoved(oldSignal);
                ++i;
            }
        }
        for (; i < oldSignals.size(); ++i) {
            const Signal oldSignal = oldSignals[i];
            if (const auto partner = newModule_.findSignal(oldSignal.name())) {
                compare(oldSignal, *partner);
            } else {
                tellRemoved(oldSignal);
            }
        }
        for (; j < newSignals.size(); ++j) {
            if (isAdded(newSignals[j])) {
                tellAdded(newSignals[j]);
            }
        }
    }

    void compareConversions() const {
        const List<Conversion> oldConversions = oldModule_.conversions();
        for (std::size_t i = 0; i < oldConversions.size(); ++i) {
            const Conversion oldConversion = oldConversions[i];
            const auto partner = partnerOf(oldConversion, i);
            if (partner && !sameConversion(oldConversion, *partner)) {
                tellConversion(oldConversion, *partner);
            }
        }
    }

  private:
    bool isAdded(const Signal& newSignal) const { return !oldModule_.findSignal(newSignal.name()); }

    void tell(DiffKind kind, const Signal& signal, std::optional<std::string> oldValue,
              std::optional<std::string> newValue) const {
        take_({kind, DiffObject::Signal, name_, std::string(signal.name()), std::move(oldValue),
               std::move(newValue)});
    }

    void tellAdded(const Signal& signal) const {
        tell(DiffKind::Added, signal, std::nullopt, shownAddress(signal));
    }
    void tellRemoved(const Signal& signal) const {
        tell(DiffKind::Removed, signal, shownAddress(signal), std::nullopt);
    }

    /// The new conversion of the same name, first of all that at the same place: names may be there
    /// twice.
    std::optional<Conversion> partnerOf(const Conversion& conversion, std::size_t index) const {
        const List<Conversion> others = newModule_.conversions();
        if (index < others.size() && others[index].name() == conversion.name() &&
            others[index].isTable() == conversion.isTable()) {
            return others[index];
        }
        return conversion.isTable() ? newModule_.findTable(conversion.name())
                                    : newModule_.findConversion(conversion.name());
    }

    void tellConversion(const Conversion& oldConversion, const Conversion& newConversion) const {
        const auto row = firstDifferentRow(oldConversion, newConversion);
        take_({DiffKind::Conversion,
               oldConversion.isTable() ? DiffObject::Table : DiffObject::Conversion, name_,
               std::string(oldConversion.name()), shownConversion(oldConversion, row),
               shownConversion(newConversion, row)});
    }

    void compare(const Signal& oldSignal, const Signal& newSignal) const {
        if (oldSignal.address() != newSignal.address() ||
            oldSignal.addressExtension() != newSignal.addressExtension()) {
            tell(DiffKind::Address, oldSignal, shownAddress(oldSignal), shownAddress(newSignal));
        }
        if (!sameType(oldSignal, newSignal)) {
            tell(DiffKind::Type, oldSignal, shownType(oldSignal), shownType(newSignal));
        }
        if (!sameConversionName(oldSignal, newSignal)) {
            tell(DiffKind::Conversion, oldSignal, conversionOf(oldSignal), conversionOf(newSignal));
        }
        if (oldSignal.unitText() != newSignal.unitText()) {
            tell(DiffKind::Unit, oldSignal, unitOf(oldSignal), unitOf(newSignal));
        }
    }

    /// What a conversion of the same name does is told once for all of its signals.
    static bool sameConversionName(const Signal& a, const Signal& b) {
        const auto one = a.conversion();
        const auto other = b.conversion();
        if (!one || !other) {
            return one.has_value() == other.has_value();
        }
        return one->name() == other->name() && one->isDefined() == other->isDefined();
    }

    static std::optional<std::string> conversionOf(const Signal& signal) {
        const auto conversion = signal.conversion();
        return conversion ? std::optional(shownName(*conversion)) : std::nullopt;
    }

    static std::optional<std::string> unitOf(const Signal& signal) {
        const std::string_view unit = signal.unitText();
        return unit.empty() ? std::nullopt : std::optional<std::string>(unit);
    }

    const Module& oldModule_;
    const Module& newModule_;
    std::string name_;
    const DifferenceTaker& take_;
};

}  // namespace

void diffModules(const Description& oldDescription, const Description& newDescription,
                 const DifferenceTaker& take) {
    const std::vector<Module> oldModules = modulesOf(oldDescription);
    const std::vector<Module> newModules = modulesOf(newDescription);
    // A single module may have another name, as for `compare`.
    const bool bothSingle = oldModules.size() == 1 && newModules.size() == 1;
    const auto partnerOf = [&](const std::vector<Module>& modules, std::size_t index,
                               const std::vector<Module>& others) -> const Module* {
        return bothSingle ? &others.front() : findNamesake(modules, index, others);
    };
    const auto tellModule = [&take](DiffKind kind, const Module& module) {
        take({kind, DiffObject::Module, {}, std::string(module.name())});
    };
    for (std::size_t i = 0; i < oldModules.size(); ++i) {
        const Module* const newModule = partnerOf(oldModules, i, newModules);
        if (newModule == nullptr) {
            tellModule(DiffKind::Removed, oldModules[i]);
            continue;
        }
        ModuleDiff diff(oldModules[i], *newModule, take);
        diff.compareConversions();
        diff.compareSignals();
    }
    for (std::size_t i = 0; i < newModules.size(); ++i) {
        if (partnerOf(newModules, i, oldModules) == nullptr) {
            tellModule(DiffKind::Added, newModules[i]);
        }
    }
}

}  // namespace quillmark
