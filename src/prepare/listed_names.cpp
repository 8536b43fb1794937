#include "prepare/listed_names.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace quillmark::preparing {

namespace {

bool isList(std::string_view keyword, std::string_view kind) {
    return keyword.find(kind) != std::string_view::npos;
}

/// Other lists name functions and groups.
bool listsSignals(std::string_view list) {
    return isList(list, "MEASUREMENT") || isList(list, "CHARACTERISTIC");
}

/// Collects the names of signals that a name in a list stands for.
class NameCollector final : public LeafTaker {
  public:
    void begin(const Member& instance) { instance_ = &instance; }

    void take(const Leaf& leaf) override {
        const bool isMeasured =
            leaf.type.kind == Type::Kind::Measurement || leaf.type.kind == Type::Kind::Blob;
        (isMeasured ? measurements_ : characteristics_)
            .push_back(instance_->name + std::string(leaf.name.suffix));
        all_.push_back(instance_->name + std::string(leaf.name.suffix));
    }

    void lose(const PartName&, std::string_view) override { hasLost_ = true; }

    /// Those that fit into a list, or all if none does.
    [[nodiscard]] const std::vector<std::string>& namesFor(std::string_view list) const {
        if (isList(list, "MEASUREMENT") && !measurements_.empty()) {
            return measurements_;
        }
        return isList(list, "CHARACTERISTIC") && !characteristics_.empty() ? characteristics_
                                                                           : all_;
    }

    [[nodiscard]] bool contains(std::string_view signal) const {
        return std::find(all_.begin(), all_.end(), signal) != all_.end();
    }

    [[nodiscard]] bool hasLost() const { return hasLost_; }

  private:
    const Member* instance_ = nullptr;
    std::vector<std::string> all_;
    std::vector<std::string> measurements_;
    std::vector<std::string> characteristics_;
    bool hasLost_ = false;
};

}  // namespace

std::size_t editListedNames(BlockWalk& walk, const ModuleSurvey& module,
                            const ExpansionOptions& options) {
    if (module.instances.empty() && module.blobs.empty()) {
        return 0;
    }
    std::size_t changed = 0;
    std::set<std::pair<const PartRule*, std::string>> listedNames;
    for (const ListedName& listed : walk.names()) {
        if (listed.list == nullptr || !listsSignals(listed.list->keyword)) {
            continue;
        }
        const std::string_view name = walk.textOf(listed.token);
        const std::vector<NamedInstance> instances = findInstances(module, name);
        const bool isBlob = !options.blobArrays && module.blobs.contains(name);
        if (instances.empty() && !isBlob) {
            continue;
        }
        NameCollector collector;
        for (const NamedInstance& named : instances) {
            collector.begin(*named.instance);
            expand(module, *named.instance, options, collector, named.target);
        }
        const auto& names = collector.namesFor(listed.list->keyword);
        if (names.empty() && !collector.hasLost() && !isBlob) {
            continue;
        }
        std::string text;
        for (const std::string& each : names) {
            if (listedNames.emplace(listed.list, each).second) {
                text += text.empty() ? each : " " + each;
            }
        }
        if (text == name) {
            continue;
        }
        ++changed;
        if (text.empty()) {
            walk.edits().takeOut(walk.text(), listed.token.begin, listed.token.end);
        } else {
            walk.edits().replace(listed.token.begin, listed.token.end, std::move(text));
        }
    }
    return changed;
}

const Member* findInstanceOf(std::string_view signal, const ModuleSurvey& module,
                             const ExpansionOptions& options) {
    if (!module.expandedNames.contains(signal)) {
        return nullptr;
    }
    for (const NamedInstance& named : findInstances(module, signal)) {
        NameCollector collector;
        collector.begin(*named.instance);
        expand(module, *named.instance, options, collector);
        if (collector.contains(signal)) {
            return named.instance;
        }
    }
    return nullptr;
}

}  // namespace quillmark::preparing
