#include "prepare/survey.h"

#include "prepare/description_scanner.h"

namespace quillmark::preparing {

namespace {

constexpr std::size_t kFirstSlots = 64;

/// 0 stands for a free slot.
std::uint64_t hashOf(std::string_view name) {
    // FNV-1a, and a last round that spreads the low bits, by which slots are found.
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const char byte : name) {
        hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3U;
    }
    hash = (hash ^ hash >> 32U) * 0x9E3779B97F4A7C15U;
    hash ^= hash >> 29U;
    return hash == 0 ? 1 : hash;
}

/// Reads one description for what later passes need.
class Surveyor {
  public:
    Surveyor(SourceText& source, Report& report, bool skipsMissing)
        : source_(source), report_(report), scanner_(source, report, {skipsMissing, false}) {}

    Survey run() {
        for (;;) {
            Part part = scanner_.next();
            switch (part.kind) {
                case Part::Kind::EndOfDescription:
                case Part::Kind::Refused:
                    return std::move(survey_);
                case Part::Kind::ModuleBegin:
                    survey_.modules.push_back({});
                    survey_.modules.back().name = part.name;
                    survey_.modules.back().place = source_.placeOf(part.begin);
                    break;
                case Part::Kind::Block:
                    if (!readBlock(part)) {
                        return std::move(survey_);
                    }
                    break;
                default:
                    break;
            }
            scanner_.discard(part.end);
        }
    }

  private:
    static bool matters(std::string_view keyword) {
        return keyword == "INSTANCE" || keyword == "BLOB" || keyword == "RECORD_LAYOUT" ||
               keyword == "MOD_PAR" || keyword == "MOD_COMMON" ||
               (keyword.substr(0, 8) == "TYPEDEF_" && findModuleBlock(keyword) != nullptr);
    }

    /// False after an error.
    bool readBlock(Part& part) {
        const bool isWanted = part.level == Part::Level::Module && matters(part.keyword);
        if (!scanner_.readBlock(part, isWanted)) {
            return false;
        }
        if (isWanted) {
            surveyBlock(part, survey_.modules.back());
        }
        return true;
    }

    void surveyBlock(const Part& part, ModuleSurvey& module) {
        const std::string_view text = source_.view().substr(part.begin, part.end - part.begin);
        walk_.walk(text, *findModuleBlock(part.keyword));
        const std::string_view keyword = part.keyword;
        if (keyword == "RECORD_LAYOUT") {
            module.recordLayouts[std::string(walk_.parameter(0))] = readRecordLayout(walk_);
        } else if (keyword == "MOD_COMMON") {
            readAlignments(walk_, module.alignments);
        } else if (keyword == "MOD_PAR") {
            readModPar(module);
        } else if (keyword == "BLOB") {
            module.blobs.emplace(walk_.parameter(0));
        } else if (keyword == "INSTANCE") {
            if (auto instance = readInstance(walk_, source_.placeOf(part.begin))) {
                module.instanceNames.insert(instance->name);
                module.instancesByName.emplace(instance->name, module.instances.size());
                module.instances.push_back(std::move(*instance));
            }
        } else if (auto type = readType(keyword, walk_, source_.placeOf(part.begin))) {
            addType(std::move(type), module);
        }
    }

    void readModPar(ModuleSurvey& module) {
        module.hasModPar = true;
        for (const FoundPart& found : walk_.parts()) {
            module.hasEpk |= found.rule->keyword == "EPK";
            module.hasEpkAddress |= found.rule->keyword == "ADDR_EPK";
        }
    }

    void addType(std::unique_ptr<Type> type, ModuleSurvey& module) {
        const std::string name = type->name;
        const Place place = type->place;
        const auto [known, isNew] = module.types.try_emplace(name, std::move(type));
        if (!isNew) {
            report_.error(place, "the type " + name +
                                     " is defined a second time; the first is in " +
                                     report_.textOf(known->second->place));
        }
    }

    SourceText& source_;
    Report& report_;
    DescriptionScanner scanner_;
    Survey survey_;
    BlockWalk walk_;
};

}  // namespace

std::size_t NameSet::slotOf(std::uint64_t hash) const {
    std::size_t slot = hash & (slots_.size() - 1);
    while (slots_[slot] != 0 && slots_[slot] != hash) {
        slot = (slot + 1) & (slots_.size() - 1);
    }
    return slot;
}

void NameSet::grow() {
    std::vector<std::uint64_t> old(slots_.empty() ? kFirstSlots : 2 * slots_.size());
    old.swap(slots_);
    for (const std::uint64_t hash : old) {
        if (hash != 0) {
            slots_[slotOf(hash)] = hash;
        }
    }
}

bool NameSet::insert(std::string_view name) {
    if (2 * count_ >= slots_.size()) {
        grow();
    }
    const std::uint64_t hash = hashOf(name);
    std::uint64_t& slot = slots_[slotOf(hash)];
    if (slot == hash) {
        return false;
    }
    slot = hash;
    ++count_;
    return true;
}

bool NameSet::contains(std::string_view name) const {
    return !slots_.empty() && slots_[slotOf(hashOf(name))] != 0;
}

Survey surveyDescription(SourceText& source, Report& report, bool skipsMissing) {
    return Surveyor(source, report, skipsMissing).run();
}

}  // namespace quillmark::preparing
