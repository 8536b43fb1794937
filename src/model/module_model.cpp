#include "model/module_model.h"

namespace quillmark {

// Signals and groups may refer to each other in circles or in long chains. Cutting these references
// first lets every object die with its own list, one after the other.
PhGroup::~PhGroup() {
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
