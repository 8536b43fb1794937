#include "a2l/resolution.h"

#include <cstddef>

#include "a2l/reader/message_text.h"

namespace quillmark {

namespace {

/// Resolves the references of one scope.
class ScopeResolver {
  public:
    ScopeResolver(PhRoot& root, PhGroup& scope) : root_(root), scope_(scope) {}

    void resolveAll();

  private:
    void resolveType(PhTypeData& type);
    void resolveConversion(PhConversion& conversion);
    void resolveSignal(PhEntity& signal);
    void resolveFunction(PhFunction& function);

    template <typename T>
    void resolveReference(PhHandle<T>& reference, PhObjectList<T> PhGroup::*kind,
                          std::string_view message);
    template <typename T>
    void resolveReferences(PhObjectList<T>& references, PhObjectList<T> PhGroup::*kind,
                           std::string_view message);

    PhRoot& root_;
    PhGroup& scope_;
};

constexpr std::string_view kConversionMessage = "Conversion '%s' unresolved.\n";
constexpr std::string_view kUnitMessage = "Unit '%s' unresolved.\n";
constexpr std::string_view kSignalMessage = "Signal '%s' unresolved.\n";
constexpr std::string_view kFunctionMessage = "Function '%s' unresolved.\n";
constexpr std::string_view kRecordLayoutMessage = "RecordLayout '%s' unresolved.\n";

// Whoever follows the messages sees them in this order.
void ScopeResolver::resolveAll() {
    for (PhEntity& signal : scope_.signals) {
        resolveReference(signal.recordLayout, &PhGroup::recordLayouts, kRecordLayoutMessage);
    }
    for (PhRecordLayout& layout : scope_.recordLayouts) {
        if (layout.dataType) {
            resolveType(*layout.dataType);
        }
    }
    for (PhConversion& conversion : scope_.conversions) {
        resolveConversion(conversion);
    }
    for (PhEntity& signal : scope_.signals) {
        resolveSignal(signal);
    }
    for (PhFunction& function : scope_.functions) {
        resolveFunction(function);
    }
    for (PhFrame& frame : scope_.frames) {
        resolveReferences(frame.signals, &PhGroup::signals, kSignalMessage);
    }
}

// The conversion may be that of an enclosing scope, whose own turn comes later.
void ScopeResolver::resolveType(PhTypeData& type) {
    resolveReference(type.conversion, &PhGroup::conversions, kConversionMessage);
    if (type.conversion) {
        resolveConversion(*type.conversion);
    }
    resolveReference(type.unit, &PhGroup::units, kUnitMessage);
}

void ScopeResolver::resolveConversion(PhConversion& conversion) {
    resolveReference(conversion.tableRef, &PhGroup::conversions, kConversionMessage);
    resolveReference(conversion.unit, &PhGroup::units, kUnitMessage);
}

void ScopeResolver::resolveSignal(PhEntity& signal) {
    resolveType(signal.datatype);
    if (PhEntity::Extras* extras = signal.extrasIfAny()) {
        resolveReferences(extras->virtualMembers, &PhGroup::signals, kSignalMessage);
    }
}

void ScopeResolver::resolveFunction(PhFunction& function) {
    resolveReferences(function.signals, &PhGroup::signals, kSignalMessage);
    resolveReferences(function.functions, &PhGroup::functions, kFunctionMessage);
}

template <typename T>
void ScopeResolver::resolveReference(PhHandle<T>& reference, PhObjectList<T> PhGroup::*kind,
                                     std::string_view message) {
    if (!reference || !reference->isPlaceholder() || reference->isUnresolved()) {
        return;
    }
    T* found = findInScope(&scope_, kind, reference->name().view());
    if (found != nullptr && found != reference.get()) {
        reference = PhHandle<T>(found);
        return;
    }
    reference->markUnresolved();
    if (root_.logger != nullptr) {
        root_.logger->warning("%s", {}, 0, MessageText(message, {reference->name().view()}).view());
    }
}

template <typename T>
void ScopeResolver::resolveReferences(PhObjectList<T>& references, PhObjectList<T> PhGroup::*kind,
                                      std::string_view message) {
    for (std::size_t i = 0; i < references.count(); ++i) {
        resolveReference(references.handle(i), kind, message);
    }
}

}  // namespace

int resolve(PhRoot& root) {
    for (PhGroup& document : root.documents) {
        resolveScope(root, document);
    }
    return 0;
}

void resolveScope(PhRoot& root, PhGroup& scope) {
    for (PhGroup& document : scope.documents) {
        resolveScope(root, document);
    }
    if (!scope.referencesAreBound) {
        ScopeResolver(root, scope).resolveAll();
    }
}

}  // namespace quillmark
