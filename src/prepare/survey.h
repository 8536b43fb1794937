#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "prepare/types.h"

namespace quillmark::preparing {

/// Hashes of names, in a table that needs little more than them.
class NameSet {
  public:
    /// False if a name of this hash is in the set already.
    bool insert(std::string_view name);

    [[nodiscard]] bool contains(std::string_view name) const;
    [[nodiscard]] bool empty() const { return count_ == 0; }

  private:
    void grow();
    [[nodiscard]] std::size_t slotOf(std::uint64_t hash) const;

    std::vector<std::uint64_t> slots_;
    std::size_t count_ = 0;
};

/// What a module holds that other parts of it depend on.
struct ModuleSurvey {
    std::string name;
    Place place;
    bool hasModPar = false;
    bool hasEpk = false;
    bool hasEpkAddress = false;

    std::map<std::string, std::unique_ptr<Type>, std::less<>> types;
    std::map<std::string, RecordLayout, std::less<>> recordLayouts;
    Alignments alignments;
    std::vector<Member> instances;  ///< in the order of the text
    std::multimap<std::string, std::size_t, std::less<>> instancesByName;
    NameSet instanceNames;  ///< those names once more: most others are quickly told from them
    std::set<std::string, std::less<>> blobs;

    /// The names of all signals that instances become.
    NameSet expandedNames;
};

/// Everything that has to be known before the first byte can be written.
struct Survey {
    std::vector<ModuleSurvey> modules;
};

class DescriptionScanner;
class SourceText;

/// Reads a description through. What was told as an error is in the report.
Survey surveyDescription(SourceText& source, Report& report, bool skipsMissing);

}  // namespace quillmark::preparing
