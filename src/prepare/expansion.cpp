#include "prepare/expansion.h"

#include <algorithm>
#include <limits>

#include "prepare/token_reader.h"

namespace quillmark::preparing {

namespace {

constexpr std::size_t kDeepestStructure = 200;
constexpr std::uint64_t kMost = std::numeric_limits<std::uint64_t>::max();

std::uint64_t sum(std::uint64_t a, std::uint64_t b) {
    return a > kMost - b ? kMost : a + b;
}

std::uint64_t product(std::uint64_t a, std::uint64_t b) {
    return b != 0 && a > kMost / b ? kMost : a * b;
}

/// Whether one of two names is the other one, or that of something that it lies in.
bool areRelated(std::string_view name, std::string_view target) {
    const std::size_t length = std::min(name.size(), target.size());
    if (name.substr(0, length) != target.substr(0, length)) {
        return false;
    }
    const std::string_view longer = name.size() > target.size() ? name : target;
    return longer.size() == length || length == 0 || longer[length] == '.' || longer[length] == '[';
}

/// Where an element of an array lies, counted in elements, as the reader lays out the values of a
/// measurement. The second index is the contiguous one unless ROW_DIR is told.
std::int64_t elementOffset(const Array& array, const std::vector<std::int64_t>& indices) {
    const auto& sizes = array.sizes;
    if (sizes.size() >= 2 && !array.isRowWiseOr(false)) {
        const std::int64_t third = sizes.size() > 2 ? indices[2] * sizes[1] * sizes[0] : 0;
        return indices[1] + indices[0] * sizes[1] + third;
    }
    std::int64_t offset = 0;
    std::int64_t step = 1;
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        offset += indices[i] * step;
        step *= sizes[i];
    }
    return offset;
}

/// Goes through the elements of an array, the first index running fastest.
template <typename Visit>
void forEachElement(const Array& array, Visit visit) {
    std::vector<std::int64_t> indices(array.sizes.size());
    for (;;) {
        visit(indices);
        std::size_t i = 0;
        while (i < indices.size() && ++indices[i] == array.sizes[i]) {
            indices[i] = 0;
            ++i;
        }
        if (i == indices.size()) {
            return;
        }
    }
}

/// Has the reader a layout for so many sizes?
bool canBeLaidOut(const Array& array) {
    constexpr std::size_t kMostSizes = 3;
    return array.sizes.size() <= kMostSizes || array.isRowWiseOr(false);
}

bool staysArray(const Array& array) {
    constexpr std::size_t kMostSizes = 3;
    return array.sizes.size() <= kMostSizes;
}

constexpr std::string_view kNoLayout = "an array of more than three sizes without LAYOUT ROW_DIR";

/// Writes out one instance.
class Expander {
  public:
    Expander(const ModuleSurvey& module, const std::string& instance,
             const ExpansionOptions& options, LeafTaker& taker, std::string_view target)
        : module_(module),
          instance_(instance),
          hasOddNames_(options.separator != "." || !isLetter(instance.front())),
          options_(options),
          taker_(taker),
          target_(target) {}

    void expandMember(const Member& member, std::int64_t offset) {
        if (member.isPointer || (member.type != nullptr && member.type->isPointer)) {
            lose("its address holds another address (ADDRESS_TYPE)");
            return;
        }
        if (member.type == nullptr) {
            lose("the type " + member.typeName + " is missing");
            return;
        }
        const Type& type = *member.type;
        Array array = member.array;
        array.isRowWise = array.isRowWise ? array.isRowWise : type.array.isRowWise;
        if (!canBeLaidOut(array) || !canBeLaidOut(type.array)) {
            lose(kNoLayout);
        } else if (type.kind == Type::Kind::Measurement) {
            expandMeasurement(array, type, offset);
        } else if (type.kind == Type::Kind::Blob && !options_.blobArrays) {
            lose("a BLOB");
        } else {
            expandElements(array, type, offset);
        }
    }

  private:
    /// An array stays one, unless its elements are arrays themselves or it has too many sizes.
    void expandMeasurement(const Array& array, const Type& type, std::int64_t offset) {
        const ValueType* value = findValueType(type.parameters[2]);
        if (value == nullptr || value->name == "FLOAT16_IEEE") {
            lose("the data type " + type.parameters[2]);
            return;
        }
        if (type.array.sizes.empty() && staysArray(array)) {
            take(type, array, offset);
            return;
        }
        const std::int64_t each =
            offsetProduct(static_cast<std::int64_t>(type.array.count()), value->size);
        forEachIndexed(array, offset, each, [&](std::int64_t at) {
            if (staysArray(type.array)) {
                take(type, type.array, at);
                return;
            }
            forEachIndexed(type.array, at, value->size,
                           [&](std::int64_t inner) { take(type, {}, inner); });
        });
    }

    void expandElements(const Array& array, const Type& type, std::int64_t offset) {
        const std::optional<std::int64_t> size = array.sizes.empty() ? 0 : elementSize(type);
        if (!size) {
            lose("an array of characteristics whose record layout " + layoutName(type) +
                 " does not tell their size");
            return;
        }
        forEachIndexed(array, offset, *size, [&](std::int64_t at) {
            if (type.kind == Type::Kind::Structure) {
                expandComponents(type, at);
            } else {
                take(type, {}, at);
            }
        });
    }

    void expandComponents(const Type& structure, std::int64_t offset) {
        scopes_.push_back({&structure, suffix_.size()});
        for (const Member& component : structure.components) {
            const std::size_t suffix = suffix_.size();
            const std::size_t path = path_.size();
            const std::size_t plain = plain_.size();
            suffix_.append(options_.separator).append(component.name);
            path_.append(path_.empty() ? "" : ".").append(component.name);
            plain_.append(plain_.empty() ? "" : ".").append(component.name);
            if (areRelated(dotted(), target_)) {
                expandMember(component, offsetSum(offset, component.offset));
            }
            suffix_.resize(suffix);
            path_.resize(path);
            plain_.resize(plain);
        }
        scopes_.pop_back();
    }

    template <typename Visit>
    void forEachIndexed(const Array& array, std::int64_t offset, std::int64_t size, Visit visit) {
        if (array.sizes.empty()) {
            visit(offset);
            return;
        }
        const std::size_t suffix = suffix_.size();
        const std::size_t path = path_.size();
        forEachElement(array, [&](const std::vector<std::int64_t>& indices) {
            for (const std::int64_t index : indices) {
                const std::string text = "[" + std::to_string(index) + "]";
                suffix_ += text;
                path_ += text;
            }
            if (areRelated(dotted(), target_)) {
                visit(offsetSum(offset, offsetProduct(size, elementOffset(array, indices))));
            }
            suffix_.resize(suffix);
            path_.resize(path);
        });
    }

    /// The path as a list of names has it behind the name of the instance.
    [[nodiscard]] std::string_view dotted() {
        if (target_.empty()) {
            return {};
        }
        dotted_ = path_.empty() || path_.front() == '[' ? "" : ".";
        dotted_ += path_;
        return dotted_;
    }

    /// Whether the words within its values are swapped, which version 1.6 cannot say. Values of one
    /// word have nothing to swap.
    [[nodiscard]] bool hasSwappedWords(const Type& type) const {
        const WrittenPart* order = type.find("BYTE_ORDER");
        if (order == nullptr || !isWordSwapped(valueOf(order->text))) {
            return false;
        }
        constexpr std::int64_t kWord = 2;
        const ValueType* value = valueTypeOf(type);
        return value == nullptr || value->size > kWord;
    }

    [[nodiscard]] const ValueType* valueTypeOf(const Type& type) const {
        if (type.kind == Type::Kind::Measurement) {
            return findValueType(type.parameters[2]);
        }
        const auto layout = module_.recordLayouts.find(layoutName(type));
        if (layout == module_.recordLayouts.end()) {
            return nullptr;
        }
        const std::string_view wanted = type.kind == Type::Kind::Axis ? "AXIS_PTS_X" : "FNC_VALUES";
        for (const RecordLayout::Component& component : layout->second.components) {
            if (component.keyword == wanted && !component.parameters.empty()) {
                return findValueType(component.parameters[0]);
            }
        }
        return nullptr;
    }

    static std::string layoutName(const Type& type) { return type.parameters[3]; }

    [[nodiscard]] std::optional<std::int64_t> elementSize(const Type& type) const {
        if (type.kind == Type::Kind::Structure || type.kind == Type::Kind::Blob) {
            return type.size;
        }
        const auto layout = module_.recordLayouts.find(layoutName(type));
        return layout == module_.recordLayouts.end()
                   ? std::nullopt
                   : sizeOf(type, layout->second, module_.alignments);
    }

    /// What a name in a list says behind the whole name can only be an index.
    [[nodiscard]] bool isNamed(const Array& array) {
        const std::string_view own = dotted();
        return target_.size() <= own.size() || (!array.sizes.empty() && target_[own.size()] == '[');
    }

    void take(const Type& type, const Array& array, std::int64_t offset) {
        if (!isNamed(array)) {
            return;
        }
        if (hasOddNames_ && !isName(instance_ + suffix_)) {
            lose("nobody can read its name");
            return;
        }
        if (hasSwappedWords(type)) {
            lose("its byte order has swapped words");
            return;
        }
        taker_.take({{suffix_, path_, plain_}, type, offset, array, scopes_});
    }

    void lose(std::string_view why) { taker_.lose({suffix_, path_, plain_}, why); }

    const ModuleSurvey& module_;
    const std::string& instance_;
    /// Whether a name may become a word of the reader's, or end too early.
    bool hasOddNames_;
    const ExpansionOptions& options_;
    LeafTaker& taker_;
    std::string_view target_;
    std::string suffix_;
    std::string path_;
    std::string plain_;
    std::string dotted_;
    std::vector<Scope> scopes_;
};

/// Binds types and counts what instances come to.
class Binder {
  public:
    Binder(ModuleSurvey& module, const ExpansionOptions& options, Report& report)
        : module_(module), options_(options), report_(report) {}

    void run() {
        std::uint64_t all = 0;
        for (Member& instance : module_.instances) {
            const std::uint64_t own = count(instance, 0);
            all = sum(all, own);
            if (report_.hasFailed()) {
                return;
            }
            if (all > options_.limit) {
                report_.error(instance.place, "the instance " + instance.name + " becomes " +
                                                  std::to_string(own) + " signals, with those " +
                                                  "before it more than " +
                                                  std::to_string(options_.limit));
                return;
            }
        }
    }

  private:
    /// The steps that it takes to write a member out: its signals, and at least one.
    std::uint64_t count(Member& member, std::size_t depth) {
        const auto found = module_.types.find(member.typeName);
        if (found == module_.types.end()) {
            if (!options_.skipsMissing && !member.isPointer) {
                report_.error(member.place,
                              "the type " + member.typeName + " of " + member.name + " is missing");
            }
            return 1;
        }
        Type& type = *found->second;
        member.type = &type;
        Array array = member.array;
        array.isRowWise = array.isRowWise ? array.isRowWise : type.array.isRowWise;
        // Nobody follows pointers, so that lists may be chained.
        if (member.isPointer || type.isPointer || !canBeLaidOut(array)) {
            return 1;
        }
        if (type.kind == Type::Kind::Measurement && staysArray(type.array) &&
            (type.array.sizes.empty() ? staysArray(member.array) : member.array.sizes.empty())) {
            return 1;
        }
        std::uint64_t each = 1;
        if (type.kind == Type::Kind::Structure) {
            each = countComponents(type, member, depth);
        } else if (type.kind == Type::Kind::Measurement && !staysArray(type.array)) {
            each = type.array.count();
        }
        return product(each, member.array.count());
    }

    std::uint64_t countComponents(Type& structure, const Member& member, std::size_t depth) {
        if (std::find(open_.begin(), open_.end(), &structure) != open_.end()) {
            report_.error(member.place, member.name + " of " + open_.back()->name +
                                            " is of the type " + structure.name + " (" +
                                            report_.textOf(structure.place) +
                                            "), in which it lies itself");
            return 1;
        }
        if (depth == kDeepestStructure) {
            report_.error(member.place, "more than " + std::to_string(kDeepestStructure) +
                                            " structures lie within one another");
            return 1;
        }
        const auto known = counts_.find(&structure);
        // What lies in it was counted from less deep below.
        if (known != counts_.end() && known->second.depth >= depth) {
            return known->second.signals;
        }
        checkNames(structure);
        open_.push_back(&structure);
        std::uint64_t all = 0;
        for (Member& component : structure.components) {
            if (!report_.hasFailed()) {
                all = sum(all, count(component, depth + 1));
            }
        }
        open_.pop_back();
        all = std::max<std::uint64_t>(all, 1);
        counts_[&structure] = {all, depth};
        return all;
    }

    void checkNames(const Type& structure) {
        std::map<std::string_view, Place> names;
        for (const Member& component : structure.components) {
            const auto [first, isNew] = names.try_emplace(component.name, component.place);
            if (!isNew) {
                report_.error(component.place, "the name " + component.name + " exists twice in " +
                                                   structure.name + "; the first is in " +
                                                   report_.textOf(first->second));
            }
        }
    }

    ModuleSurvey& module_;
    const ExpansionOptions& options_;
    Report& report_;
    /// What a structure comes to, and how deep it lay when it was counted.
    struct Count {
        std::uint64_t signals;
        std::size_t depth;
    };
    std::map<const Type*, Count> counts_;
    std::vector<const Type*> open_;
};

/// Puts the names of signals into the module's set.
class Namer final : public LeafTaker {
  public:
    Namer(ModuleSurvey& module, Report& report) : module_(module), report_(report) {}

    void begin(const Member& instance) {
        instance_ = &instance;
        name_ = instance.name;
    }

    void take(const Leaf& leaf) override {
        name_.resize(instance_->name.size());
        name_ += leaf.name.suffix;
        if (!module_.expandedNames.insert(name_) && !report_.hasFailed()) {
            clashes_ = name_;
        }
    }

    void lose(const PartName&, std::string_view) override {}

    [[nodiscard]] const std::string& clash() const { return clashes_; }

  private:
    ModuleSurvey& module_;
    Report& report_;
    const Member* instance_ = nullptr;
    std::string name_;
    std::string clashes_;
};

/// Finds the place of a signal of this name.
class Finder final : public LeafTaker {
  public:
    explicit Finder(std::string_view name) : name_(name) {}

    void begin(const Member& instance) { instance_ = &instance; }

    void take(const Leaf& leaf) override {
        if (instance_->name + std::string(leaf.name.suffix) == name_) {
            const Scope* scope = leaf.scopes.empty() ? nullptr : &leaf.scopes.back();
            places_.push_back(instance_->place);
            if (scope != nullptr && places_.size() > 1 && places_.front() == places_.back()) {
                places_.back() = scope->structure->place;
            }
        }
    }

    void lose(const PartName&, std::string_view) override {}

    [[nodiscard]] const std::vector<Place>& places() const { return places_; }

  private:
    std::string_view name_;
    const Member* instance_ = nullptr;
    std::vector<Place> places_;
};

}  // namespace

void bindTypes(ModuleSurvey& module, const ExpansionOptions& options, Report& report) {
    Binder(module, options, report).run();
}

void nameSignals(ModuleSurvey& module, const ExpansionOptions& options, Report& report) {
    Namer namer(module, report);
    for (const Member& instance : module.instances) {
        namer.begin(instance);
        expand(module, instance, options, namer);
        if (!namer.clash().empty()) {
            Finder finder(namer.clash());
            for (const Member& candidate : module.instances) {
                finder.begin(candidate);
                expand(module, candidate, options, finder);
            }
            const auto& places = finder.places();
            report.error(places.back(), "the name " + namer.clash() +
                                            " would exist twice; the first is in " +
                                            report.textOf(places.front()));
            return;
        }
    }
}

void expand(const ModuleSurvey& module, const Member& instance, const ExpansionOptions& options,
            LeafTaker& taker, std::string_view target) {
    Expander(module, instance.name, options, taker, target).expandMember(instance, 0);
}

std::vector<NamedInstance> findInstances(const ModuleSurvey& module, std::string_view name) {
    std::vector<NamedInstance> found;
    for (std::size_t end = 1; end <= name.size(); ++end) {
        if (end < name.size() && name[end] != '.' && name[end] != '[') {
            continue;
        }
        if (!module.instanceNames.contains(name.substr(0, end))) {
            continue;
        }
        const auto [from, to] = module.instancesByName.equal_range(name.substr(0, end));
        for (auto each = from; each != to; ++each) {
            found.push_back({&module.instances[each->second], name.substr(end)});
        }
    }
    return found;
}

}  // namespace quillmark::preparing
