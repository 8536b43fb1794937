#include "a2l/module_references.h"

#include <cstdint>

namespace quillmark {

ModuleReferences::~ModuleReferences() {
    bindConversions();
    bindMembers();
    module_.referencesAreBound = openPlaceholders_ == 0;
}

void ModuleReferences::bindConversions() {
    conversions_.handOver(
        [this](std::span<const std::string_view> names) {
            module_.conversions.prepareToFind(names);
        },
        [this](PhEntity& signal, std::string_view name) {
            signal.datatype.conversion = refer<PhConversion>(name);
            const std::uint32_t hash = PhNameIndex::hashOf(name);
            recentConversion(hash) = {hash, signal.datatype.conversion};
        });
}

void ModuleReferences::bindMembers() {
    members_.handOver(
        [this](std::span<const std::string_view> names) {
            module_.signals.prepareToFind(names);
            std::get<Kind<PhEntity>>(kinds_).placeholders.prepareToFind(names);
        },
        [this](PhFunction& function, std::string_view name) {
            function.signals.append(refer<PhEntity>(name));
        });
}

}  // namespace quillmark
