#include "a2l/interfaces/daq_source.h"

#include <utility>

#include "model/setting_names.h"

namespace quillmark {

namespace {

void append(PhValue& entry, std::string_view name, PhHandle<PhValue> value) {
    value->setName(PhString(name));
    entry.list().push_back(std::move(value));
}

}  // namespace

DaqSource addDaqSource(PhStationParam& station) {
    PhDaqCapabilities& capabilities = station.daqCapabilities();
    capabilities.daqLists.append(makePh<PhDaq>());
    PhObjectList<PhDaqTpCan>& tpCans = station.daqTpCapabilities().daqLists;
    tpCans.append(makePh<PhDaqTpCan>());
    PhValue& entry = appendList(capabilities.properties->list(setting::kSources));
    return {capabilities.daqLists.last(), tpCans.last(), entry};
}

void appendInteger(PhValue& entry, std::string_view name, std::int32_t value) {
    append(entry, name, PhValue::ofInteger(value));
}

void appendText(PhValue& entry, std::string_view name, std::string_view text) {
    append(entry, name, PhValue::ofText(text));
}

PhValue& appendList(PhValue::List& list) {
    auto created = makePh<PhValue>();
    created->list();
    list.push_back(created);
    return *created;
}

}  // namespace quillmark
