#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "prepare/survey.h"

namespace quillmark::preparing {

/// A structure on the way to a component: `nameLength` bytes of the component's suffix belong to
/// the structure's.
struct Scope {
    const Type* structure;
    std::size_t nameLength;
};

/// What part of an instance something is. The texts are views, gone after the call.
struct PartName {
    /// What is behind the instance's name, with the separator that was asked for.
    std::string_view suffix;
    /// How OVERWRITE names it: with points, with and without indices.
    std::string_view path;
    std::string_view plainPath;
};

/// One signal that an instance becomes.
struct Leaf {
    PartName name;
    const Type& type;
    /// Bytes from the start of the instance.
    std::int64_t offset;
    /// How many values; at most three sizes.
    const Array& array;
    /// The structures that it lies in, from the outside.
    const std::vector<Scope>& scopes;
};

/// Takes what an instance becomes.
class LeafTaker {
  public:
    virtual ~LeafTaker() = default;
    virtual void take(const Leaf& leaf) = 0;

    /// Something that has no counterpart.
    virtual void lose(const PartName& name, std::string_view why) = 0;
};

/// How instances are written out as single signals.
struct ExpansionOptions {
    std::string separator = ".";
    bool blobArrays = false;
    bool skipsMissing = false;
    std::uint64_t limit = 10'000'000;
};

/// Binds the members of a module to their types and makes sure that all instances can be written
/// out: nothing is missing, contains itself or has two meanings, and it is not too much. Else an
/// error is told.
void bindTypes(ModuleSurvey& module, const ExpansionOptions& options, Report& report);

/// Names all signals of a module's instances. A name that exists twice is an error.
void nameSignals(ModuleSurvey& module, const ExpansionOptions& options, Report& report);

/// Writes out one instance: depth first, components in the order of their structure, the first
/// index of an array running fastest. With a `target` (as in a list of names, behind the name of
/// the instance) only what it names.
void expand(const ModuleSurvey& module, const Member& instance, const ExpansionOptions& options,
            LeafTaker& taker, std::string_view target = {});

/// What a name in a list stands for, if it is that of an instance or lies in one.
struct NamedInstance {
    const Member* instance;
    std::string_view target;
};
std::vector<NamedInstance> findInstances(const ModuleSurvey& module, std::string_view name);

}  // namespace quillmark::preparing
