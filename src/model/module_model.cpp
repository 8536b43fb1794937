#include "model/module_model.h"

namespace quillmark {

PhGroup::~PhGroup() {
    cutReferences();
}

void PhGroup::releaseObjects() {
    cutReferences();
    functions.clear();
    frames.clear();
    signals.clear();
    recordLayouts.clear();
    conversions.clear();
    units.clear();
}

// Signals and groups may refer to each other in circles or in long chains. Cutting these references
// first lets every object die with its own list, one after the other.
void PhGroup::cutReferences() {
    for (PhEntity& signal : signals) {
        if (PhEntity::Extras* extras = signal.extrasIfAny()) {
            extras->virtualMembers.clear();
        }
    }
    for (PhFunction& function : functions) {
        function.functions.clear();
    }
}

PhProperties& PhGroup::obtainProperties() {
    if (!properties) {
        properties = makePh<PhProperties>();
    }
    return *properties;
}

}  // namespace quillmark
