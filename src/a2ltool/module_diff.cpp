#include "a2ltool/module_diff.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "a2ltool/conversion_diff.h"
#include "a2ltool/shown_signal.h"
#include "quillmark/model.h"

namespace quillmark::a2ltool {
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
    ModuleDiff(const Module& oldModule, const Module& newModule, const DifferenceHandler& tell)
        : oldModule_(oldModule), newModule_(newModule), name_(oldModule.name()), tell_(tell) {}

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

    void compareConversions() {
        for (const Conversion& oldConversion : oldModule_.conversions()) {
            const auto partner = oldConversion.isTable()
                                     ? newModule_.findTable(oldConversion.name())
                                     : newModule_.findConversion(oldConversion.name());
            if (partner && !sameConversion(oldConversion, *partner)) {
                tell_({DifferenceKind::Conversion, oldConversion.isTable() ? "table" : "conversion",
                       name_, oldConversion.name(), shownConversion(oldConversion),
                       shownConversion(*partner)});
            }
        }
    }

  private:
    bool isAdded(const Signal& newSignal) const { return !oldModule_.findSignal(newSignal.name()); }

    void tellAdded(const Signal& signal) {
        tell_({DifferenceKind::Added, "signal", name_, signal.name(), {}, shownAddress(signal)});
    }
    void tellRemoved(const Signal& signal) {
        tell_({DifferenceKind::Removed, "signal", name_, signal.name(), shownAddress(signal)});
    }

    void compare(const Signal& oldSignal, const Signal& newSignal) {
        if (oldSignal.address() != newSignal.address() ||
            oldSignal.addressExtension() != newSignal.addressExtension()) {
            tell_({DifferenceKind::Address, "signal", name_, oldSignal.name(),
                   shownAddress(oldSignal), shownAddress(newSignal)});
        }
        if (!sameType(oldSignal, newSignal)) {
            tell_({DifferenceKind::Type, "signal", name_, oldSignal.name(), shownType(oldSignal),
                   shownType(newSignal)});
        }
        if (conversionName(oldSignal) != conversionName(newSignal)) {
            tell_({DifferenceKind::Conversion, "signal", name_, oldSignal.name(),
                   conversionName(oldSignal), conversionName(newSignal)});
        }
        if (oldSignal.unitText() != newSignal.unitText()) {
            tell_({DifferenceKind::Unit, "signal", name_, oldSignal.name(), unitOf(oldSignal),
                   unitOf(newSignal)});
        }
    }

    static std::optional<std::string> conversionName(const Signal& signal) {
        const auto conversion = signal.conversion();
        return conversion ? std::optional<std::string>(conversion->name()) : std::nullopt;
    }

    static std::optional<std::string> unitOf(const Signal& signal) {
        const std::string_view unit = signal.unitText();
        return unit.empty() ? std::nullopt : std::optional<std::string>(unit);
    }

    const Module& oldModule_;
    const Module& newModule_;
    std::string_view name_;
    const DifferenceHandler& tell_;
};

}  // namespace

void diffSignals(const Description& oldDescription, const Description& newDescription,
                 const DifferenceHandler& tell) {
    const std::vector<Module> oldModules = modulesOf(oldDescription);
    const std::vector<Module> newModules = modulesOf(newDescription);
    // A single module may have another name, as for `compare`.
    const bool bothSingle = oldModules.size() == 1 && newModules.size() == 1;
    const auto partnerOf = [&](const std::vector<Module>& modules, std::size_t index,
                               const std::vector<Module>& others) -> const Module* {
        return bothSingle ? &others.front() : findNamesake(modules, index, others);
    };
    for (std::size_t i = 0; i < oldModules.size(); ++i) {
        const Module* const newModule = partnerOf(oldModules, i, newModules);
        if (newModule == nullptr) {
            tell({DifferenceKind::Removed, "module", {}, oldModules[i].name()});
            continue;
        }
        ModuleDiff diff(oldModules[i], *newModule, tell);
        diff.compareConversions();
        diff.compareSignals();
    }
    for (std::size_t i = 0; i < newModules.size(); ++i) {
        if (partnerOf(newModules, i, oldModules) == nullptr) {
            tell({DifferenceKind::Added, "module", {}, newModules[i].name()});
        }
    }
}

}  // namespace quillmark::a2ltool
