#include "quillmark/list.h"

#include <vector>

#include "library/view_access.h"
#include "model/module_model.h"
#include "model/protocol_model.h"
#include "model/signal_model.h"
#include "quillmark/model.h"
#include "quillmark/protocol.h"

namespace quillmark {
namespace {

/// Where the items of a list are in the model.
template <typename Item>
struct Source;

template <typename Object>
struct Objects {
    using Type = PhObjectList<Object>;
    static std::size_t count(const Type& list) { return list.count(); }
    static const Object& at(const Type& list, std::size_t index) { return list.at(index); }
};
template <typename Object>
struct Handles {
    using Type = std::vector<PhHandle<Object>>;
    static std::size_t count(const Type& list) { return list.size(); }
    static const Object& at(const Type& list, std::size_t index) { return *list[index]; }
};
template <typename Object>
struct Values {
    using Type = std::vector<Object>;
    static std::size_t count(const Type& list) { return list.size(); }
    static const Object& at(const Type& list, std::size_t index) { return list[index]; }
};

template <>
struct Source<Project> : Objects<PhGroup> {};
template <>
struct Source<Module> : Objects<PhGroup> {};
template <>
struct Source<Signal> : Objects<PhEntity> {};
template <>
struct Source<Conversion> : Objects<PhConversion> {};
template <>
struct Source<Unit> : Objects<PhUnit> {};
template <>
struct Source<RecordLayout> : Objects<PhRecordLayout> {};
template <>
struct Source<Group> : Objects<PhFunction> {};
template <>
struct Source<Frame> : Objects<PhFrame> {};
template <>
struct Source<MemorySegment> : Objects<PhMemoryPage> {};
template <>
struct Source<Setting> : Handles<PhValue> {};
template <>
struct Source<TableRow> : Values<PhTableEntry> {};
template <>
struct Source<EventReference> : Values<PhSignalEvent> {};
template <>
struct Source<Protocol> : Objects<PhCommParam> {};
template <>
struct Source<Transport> : Objects<PhTransportParam> {};
template <>
struct Source<FlexRayBuffer> : Objects<PhFlexRayBuffer> {};
template <>
struct Source<DaqCanId> : Objects<PhDaqTpCan> {};
template <>
struct Source<Event> : Objects<PhRaster> {};
template <>
struct Source<DaqList> : Objects<PhDaq> {};
template <>
struct Source<Odt> : Objects<PhOdt> {};
template <>
struct Source<OdtEntry> : Objects<PhOdtEntry> {};

template <typename Item>
const typename Source<Item>::Type& itemsOf(const void* list) {
    return *static_cast<const typename Source<Item>::Type*>(list);
}

template <typename Item, typename Object>
Item viewOf(const Object& object) {
    return ViewAccess::view<Item>(object);
}

template <>
EventReference viewOf<EventReference>(const PhSignalEvent& event) {
    return {static_cast<EventUse>(event.use), event.channel};
}

}  // namespace

template <typename Item>
std::size_t List<Item>::size() const noexcept {
    return list_ == nullptr ? 0 : Source<Item>::count(itemsOf<Item>(list_));
}

template <typename Item>
Item List<Item>::operator[](std::size_t index) const noexcept {
    return viewOf<Item>(Source<Item>::at(itemsOf<Item>(list_), index));
}

template class List<Project>;
template class List<Module>;
template class List<Signal>;
template class List<Conversion>;
template class List<Unit>;
template class List<RecordLayout>;
template class List<Group>;
template class List<Frame>;
template class List<MemorySegment>;
template class List<Setting>;
template class List<TableRow>;
template class List<EventReference>;
template class List<Protocol>;
template class List<Transport>;
template class List<FlexRayBuffer>;
template class List<DaqCanId>;
template class List<Event>;
template class List<DaqList>;
template class List<Odt>;
template class List<OdtEntry>;

}  // namespace quillmark
