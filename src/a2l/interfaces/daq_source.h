#pragma once

#include <cstdint>
#include <string_view>

#include "model/ph_value.h"
#include "model/protocol_model.h"

namespace quillmark {

/// What one data source of CCP or GMLAN adds to a station: its DAQ list, the CAN identifier of that
/// list, and an entry of the list "sources", which keeps the source's settings in the order in
/// which they were told. The objects belong to the station.
struct DaqSource {
    PhDaq& daq;
    PhDaqTpCan& tpCan;
    PhValue& entry;
};

DaqSource addDaqSource(PhStationParam& station);

/// Adds a named value to an entry.
void appendInteger(PhValue& entry, std::string_view name, std::int32_t value);
void appendText(PhValue& entry, std::string_view name, std::string_view text);

/// Adds an empty list to a list, and returns it. Its name may be told later.
PhValue& appendList(PhValue::List& list);

}  // namespace quillmark
