#pragma once

#include <cstdint>

#include "model/class_codes.h"
#include "model/enumerations.h"
#include "model/ph_logger.h"
#include "model/ph_object.h"
#include "model/ph_object_list.h"
#include "model/ph_value.h"
#include "model/protocol_model.h"
#include "model/signal_model.h"

namespace quillmark {

/// A project or a module. A project holds modules; a module holds everything else. Both are scopes
/// in which references are looked up, from the inner one outward.
class PhGroup final : public PhObject {
  public:
    PhGroup(PhDocumentKind documentKind, PhGroup* enclosing)
        : PhObject(PhClass::Group), documentKind_(documentKind), enclosing_(enclosing) {}
    ~PhGroup() override;

    PhDocumentKind documentKind() const { return documentKind_; }

    /// The scope around this one, which outlives it; nullptr for an outermost scope.
    PhGroup* enclosing() const { return enclosing_; }

    PhObjectList<PhGroup> documents;  ///< nested projects or modules
    PhObjectList<PhConversion> conversions;
    PhObjectList<PhUnit> units;
    PhObjectList<PhRecordLayout> recordLayouts;
    PhObjectList<PhEntity> signals;
    PhObjectList<PhFunction> functions;  ///< groups and functions
    PhObjectList<PhFrame> frames;
    PhObjectList<PhCommParam> commParams;
    PhObjectList<PhMemoryPage> memoryPages;
    PhHandle<PhProperties> properties;  ///< empty until something is stored

    TextLine line = 0;

    /// Whether it is known that no reference within this scope needs binding, so that resolution
    /// can pass it over.
    bool referencesAreBound = false;

    /// The properties, made at first use.
    PhProperties& obtainProperties();

  private:
    PhDocumentKind documentKind_;
    PhGroup* enclosing_;
};

/// The top of one description's model.
class PhRoot final : public PhObject {
  public:
    PhRoot() : PhObject(PhClass::Root) {}

    PhObjectList<PhGroup> documents;

    /// Text encoding of the description: 6 when it began with a UTF-8 byte-order mark, else 5.
    std::int32_t textEncoding = 0;

    /// Where unresolved references are reported; not owned, nullptr for nowhere.
    PhLogger* logger = nullptr;
};

/// Hands each module of a project to `visit(project, module)`, in the order of the description.
template <typename Visit>
void forEachModule(const PhRoot& root, Visit visit) {
    for (PhGroup& project : root.documents) {
        if (project.documentKind() != PhDocumentKind::Project) {
            continue;
        }
        for (PhGroup& module : project.documents) {
            if (module.documentKind() == PhDocumentKind::Module) {
                visit(project, module);
            }
        }
    }
}

}  // namespace quillmark
