#pragma once

#include <string_view>

#include "model/module_model.h"
#include "model/ph_object_list.h"

namespace quillmark {

/// Binds references by name, once a whole description has been read: every placeholder is replaced
/// by the object of its name that the innermost scope defines. Where there is none, the placeholder
/// stays and is marked unresolved, and the root's logger, if any, gets a warning. Never fails;
/// running it twice changes nothing. Returns 0.
int resolve(PhRoot& root);

/// The same for one scope and, first, the scopes nested in it.
void resolveScope(PhRoot& root, PhGroup& scope);

/// The first object of that name in the list `kind` of `scope` or, failing that, of the scopes
/// around it from the inside out; nullptr when there is none. Names are compared exactly.
template <typename T>
T* findInScope(PhGroup* scope, PhObjectList<T> PhGroup::*kind, std::string_view name) {
    for (; scope != nullptr; scope = scope->enclosing()) {
        if (T* object = (scope->*kind).find(name)) {
            return object;
        }
    }
    return nullptr;
}

}  // namespace quillmark
