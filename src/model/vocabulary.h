#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "model/class_codes.h"
#include "model/ph_object.h"
#include "model/ph_object_list.h"
#include "model/ph_string.h"
#include "model/ph_value.h"

namespace quillmark {

/// Shape of a class of the model's vocabulary: how many objects, lists and texts it holds.
struct PhShape {
    std::size_t handles = 0;
    std::size_t lists = 0;
    std::size_t texts = 0;
};

/// A class of the model's vocabulary that no description format fills yet. It has the identity and
/// the ownership of its kind; its slots get names once a reader fills them.
template <PhClass Code, PhShape Shape>
class PhVocabulary : public PhObject {
  public:
    static constexpr PhShape kShape = Shape;

    PhVocabulary() : PhObject(Code) {}

    std::array<PhHandle<PhObject>, Shape.handles> handles;
    std::array<PhObjectList<PhObject>, Shape.lists> lists;
    std::array<PhString, Shape.texts> strings;
};

// clang-format off
// The catalogue: class, handles, lists, texts.
#define QUILLMARK_VOCABULARY(ROW)      \
    ROW(Datatype,            2, 0, 0)  \
    ROW(Signal,              5, 0, 0)  \
    ROW(SignalRef,           1, 0, 0)  \
    ROW(Port,                0, 0, 0)  \
    ROW(PortRef,             1, 0, 0)  \
    ROW(Structure,           4, 3, 0)  \
    ROW(EntityRef,           4, 0, 0)  \
    ROW(ServiceRef,          1, 0, 0)  \
    ROW(Parameter,          10, 0, 0)  \
    ROW(ParameterRef,        2, 0, 0)  \
    ROW(Service,             1, 1, 0)  \
    ROW(SocketAddress,       1, 2, 0)  \
    ROW(SocketAddressConfig, 0, 2, 0)  \
    ROW(SocketConnection,    3, 1, 0)  \
    ROW(ConnectionBundle,    1, 2, 0)  \
    ROW(FrameTriggering,     5, 0, 0)  \
    ROW(Channel,             3, 3, 0)  \
    ROW(Cluster,             1, 1, 0)  \
    ROW(Connector,           2, 9, 0)  \
    ROW(Controller,          2, 0, 0)  \
    ROW(Ecu,                 0, 4, 0)  \
    ROW(System,              0, 0, 0)  \
    ROW(Timing,              2, 0, 0)  \
    ROW(ConnectorMapping,    2, 1, 0)  \
    ROW(FrameMapping,        2, 1, 0)  \
    ROW(SignalMapping,       2, 0, 0)  \
    ROW(ScheduleTable,       1, 1, 0)  \
    ROW(ScheduleTableEntry,  3, 0, 0)  \
    ROW(NetworkEndpoint,     0, 1, 0)  \
    ROW(NetworkAddress,      0, 0, 2)  \
    ROW(ApplicationEndpoint, 3, 1, 0)  \
    ROW(Event,               2, 0, 0)  \
    ROW(Method,              0, 0, 0)  \
    ROW(Field,               4, 0, 0)  \
    ROW(ServiceInterface,    1, 3, 0)  \
    ROW(ServiceInterfaceRef, 2, 0, 0)
// clang-format on

#define QUILLMARK_VOCABULARY_CLASS(name, handleCount, listCount, textCount) \
    class Ph##name final                                                    \
        : public PhVocabulary<PhClass::name, PhShape{handleCount, listCount, textCount}> {};
QUILLMARK_VOCABULARY(QUILLMARK_VOCABULARY_CLASS)
#undef QUILLMARK_VOCABULARY_CLASS

/// A context of texts.
class PhMlContext final : public PhObject {
  public:
    PhMlContext() : PhObject(PhClass::MlContext) {}

    std::vector<PhString> strings;
};

/// A range of values, in the description's and in the physical view.
class PhRange final : public PhObject {
  public:
    PhRange() : PhObject(PhClass::Range) {}

    std::array<PhHandle<PhObject>, 2> handles;
    std::array<PhValue, 4> values;
};

}  // namespace quillmark
