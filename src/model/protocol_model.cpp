#include "model/protocol_model.h"

#include <algorithm>
#include <cassert>

namespace quillmark {

namespace {

/// Enters the entries from position `from` to before `end`, the first of each number.
void noteEntries(std::map<std::int32_t, PhDaqTpCan*>& firstByNumber,
                 const PhObjectList<PhDaqTpCan>& entries, std::size_t from, std::size_t end) {
    for (; from < end; ++from) {
        PhDaqTpCan& entry = entries.at(from);
        firstByNumber.try_emplace(entry.number ? entry.number->toInteger() : 0, &entry);
    }
}

}  // namespace

// Long lists are left alone: to look at each entry in each search is what the note is to save.
bool PhDaqTpCapabilities::noteIsTrue() const {
    constexpr std::size_t kLong = 1000;
    if (noted_ > kLong) {
        return true;
    }
    std::map<std::int32_t, PhDaqTpCan*> now;
    noteEntries(now, daqLists, 0, std::min(noted_, daqLists.count()));
    return now == firstByNumber_;
}

PhDaqTpCan* PhDaqTpCapabilities::findByNumber(std::int32_t number) const {
    assert(noteIsTrue());
    noteEntries(firstByNumber_, daqLists, noted_, daqLists.count());
    noted_ = daqLists.count();
    const auto found = firstByNumber_.find(number);
    return found == firstByNumber_.end() ? nullptr : found->second;
}

PhProtocolParam& PhStationParam::protocolParam() {
    if (protocolParam_ == nullptr) {
        protocolParam_ = std::make_unique<PhProtocolParam>();
    }
    return *protocolParam_;
}

PhDaqTpCapabilities& PhStationParam::daqTpCapabilities() {
    if (daqTpCapabilities_ == nullptr) {
        daqTpCapabilities_ = std::make_unique<PhDaqTpCapabilities>();
    }
    return *daqTpCapabilities_;
}

PhDaqCapabilities& PhStationParam::daqCapabilities() {
    if (daqCapabilities_ == nullptr) {
        daqCapabilities_ = std::make_unique<PhDaqCapabilities>();
    }
    return *daqCapabilities_;
}

PhStationParam& PhTransportParam::stationParam() {
    if (!stationParam_) {
        stationParam_ = makePh<PhStationParam>();
    }
    return *stationParam_;
}

}  // namespace quillmark
