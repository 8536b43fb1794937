#pragma once

#include "a2l/core_reader.h"
#include "a2l/interfaces/if_data.h"
#include "model/enumerations.h"
#include "model/module_model.h"
#include "model/ph_object.h"

namespace quillmark {

// The core blocks that stand in blocks of other families, in the order of the standard's nesting.
// Each is called after `/begin KEYWORD` and returns the kind of the token after its `/end KEYWORD`.
// Whatever is not told here is known only to the file of its family.

// blocks_project.cpp
int parseProject(CoreReader& reader, PhRoot& root);

// blocks_signal.cpp
int parseMeasurement(CoreReader& reader, PhGroup& module);
int parseCharacteristic(CoreReader& reader, PhGroup& module);

// blocks_conversion.cpp
int parseCompuMethod(CoreReader& reader, PhGroup& module);
int parseCompuTab(CoreReader& reader, PhGroup& module);
int parseCompuVtab(CoreReader& reader, PhGroup& module);
int parseCompuVtabRange(CoreReader& reader, PhGroup& module);
int parseUnit(CoreReader& reader, PhGroup& module);

// blocks_record_layout.cpp
int parseRecordLayout(CoreReader& reader, PhGroup& module);

// blocks_group.cpp
int parseGroup(CoreReader& reader, PhGroup& module);
int parseFunction(CoreReader& reader, PhGroup& module);
int parseFrame(CoreReader& reader, PhGroup& module);
int parseUserRights(CoreReader& reader, PhGroup& module);

/// IF_DATA in a block of any kind.
template <typename Owner>
int parseIfData(CoreReader& reader, Owner& owner) {
    return readIfData(reader, owner, reader.moduleByteOrder());
}

/// Notes are judged and not kept: ANNOTATION in a block of any kind.
int readAnnotation(CoreReader& reader);
template <typename Owner>
int parseAnnotation(CoreReader& reader, Owner&) {
    return readAnnotation(reader);
}

/// The parameter of BYTE_ORDER; the warning "Unexpected token '%s' found" and
/// PhByteOrder::Undefined for a word that is none.
PhByteOrder readByteOrder(BlockReader& reader);

}  // namespace quillmark
