#include "model/protocol_model.h"

namespace quillmark {

PhDaqTpCan* PhDaqTpCapabilities::findByNumber(std::int32_t number) const {
    for (; indexed_ < daqLists.count(); ++indexed_) {
        PhDaqTpCan& entry = daqLists.at(indexed_);
        firstByNumber_.try_emplace(entry.number ? entry.number->toInteger() : 0, &entry);
    }
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
