#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>

#include "model/class_codes.h"
#include "model/enumerations.h"
#include "model/ph_object.h"
#include "model/ph_object_list.h"
#include "model/ph_string.h"
#include "model/ph_value.h"

namespace quillmark {

/// How the classes below hold a setting: a PhValue handle is empty until the description tells the
/// setting, and can be shared; a plain integer is a code that is 0 until told.

class PhProtocolParam final : public PhObject {
  public:
    PhProtocolParam() : PhObject(PhClass::ProtocolParam) {}

    PhByteOrder encoding = PhByteOrder::Undefined;
    PhHandle<PhProperties> properties = makePh<PhProperties>();
};

/// The CAN identifier of one DAQ list.
class PhDaqTpCan final : public PhObject {
  public:
    PhDaqTpCan() : PhObject(PhClass::DaqTpCan) {}

    PhHandle<PhValue> number;  ///< DAQ list number
    PhHandle<PhValue> canId;   ///< empty for a variable identifier
};

class PhDaqTpCapabilities final : public PhObject {
  public:
    PhDaqTpCapabilities() : PhObject(PhClass::DaqTpCapabilities) {}

    PhObjectList<PhDaqTpCan> daqLists;

    /// First entry of that DAQ list number, or nullptr; an entry without a number counts as number
    /// 0. Numbers are looked at once, by the first search after the entry was appended: from then
    /// on the entry keeps its number and its place. Debug builds see to it, in all but long lists.
    PhDaqTpCan* findByNumber(std::int32_t number) const;

  private:
    bool noteIsTrue() const;

    mutable std::map<std::int32_t, PhDaqTpCan*> firstByNumber_;  ///< of the first noted_ entries
    mutable std::size_t noted_ = 0;
};

/// A clock or cycle: a tick count in units of a unit code. XCP unit codes: 1 s, 2 ms, 3 us, 4 ns,
/// 5 ps. CCP keeps the scaling-unit code as read.
class PhTimebase final : public PhObject {
  public:
    PhTimebase() : PhObject(PhClass::Timebase) {}

    std::int32_t resolution = 0;   ///< number of units
    std::int32_t scale = 0;        ///< unit code
    PhHandle<PhValue> byteLength;  ///< size of a timestamp [bytes]
    bool fixed = false;
};

/// One element of an ODT; addresses and sizes as the protocol counts them.
class PhOdtEntry final : public PhObject {
  public:
    PhOdtEntry() : PhObject(PhClass::OdtEntry) {}

    PhHandle<PhValue> number;
    PhHandle<PhValue> address;
    PhHandle<PhValue> addressExtension;
    PhHandle<PhValue> size;
    PhHandle<PhValue> bitOffset;  ///< 0xFF: none
};

class PhOdt final : public PhObject {
  public:
    PhOdt() : PhObject(PhClass::Odt) {}

    PhHandle<PhValue> number;
    PhObjectList<PhOdtEntry> entries;
};

/// A DAQ list (XCP) or a source (CCP, GMLAN).
class PhDaq final : public PhObject {
  public:
    PhDaq() : PhObject(PhClass::Daq) {}

    std::int32_t direction = 0;       ///< XCP: 1 DAQ, 2 STIM, 3 both
    PhHandle<PhValue> number;         ///< number of the list or source
    PhHandle<PhValue> length;         ///< highest number of ODTs (CCP LENGTH, XCP MAX_ODT)
    PhHandle<PhValue> maxOdtEntries;  ///< XCP only
    PhHandle<PhValue> sourceId;       ///< CCP raster number, XCP fixed event channel
    PhHandle<PhValue> firstPid;
    PhObjectList<PhOdt> odts;
};

/// Packing of several samples into one transmission (XCP event).
class PhDaqPackedMode final : public PhObject {
  public:
    PhDaqPackedMode() : PhObject(PhClass::DaqPackedMode) {}

    std::int32_t grouping = 0;   ///< 1 element grouped, 2 event grouped
    std::int32_t timestamp = 0;  ///< 0 of the last sample, 1 of the first
    std::int32_t mandatory = 0;  ///< 1 when packing cannot be switched off
    PhHandle<PhValue> sampleCount;
    PhObjectList<PhValue> alternativeSampleCounts;
};

/// An event channel (XCP event, CCP raster, GMLAN source).
class PhRaster final : public PhObject {
  public:
    PhRaster() : PhObject(PhClass::Raster) {}

    PhString shortName;
    PhHandle<PhValue> channel;  ///< event channel number
    bool cyclic = false;        ///< the flag that GMLAN sources set
    bool daqSupported = false;
    bool stimSupported = false;
    PhHandle<PhTimebase> timebase;
    PhHandle<PhValue> priority;
    PhHandle<PhTimebase> minCycleTime;
    PhHandle<PhDaqPackedMode> packedMode;
    PhHandle<PhProperties> properties;  ///< further settings, empty handle when there are none
};

class PhDaqCapabilities final : public PhObject {
  public:
    PhDaqCapabilities() : PhObject(PhClass::DaqCapabilities) {}

    PhHandle<PhTimebase> timebase;  ///< timestamp settings; empty when timestamps are not supported
    PhHandle<PhProperties> properties = makePh<PhProperties>();
    PhObjectList<PhRaster> rasters;
    PhObjectList<PhDaq> daqLists;
    std::int32_t configType = 0;               ///< 1 static, 2 dynamic
    std::int32_t optimisationType = 0;         ///< 1 to 6, in the order of the protocol's words
    std::int32_t addressExtension = 0;         ///< 1 free, 2 one per ODT, 3 one per DAQ list
    std::int32_t identificationFieldType = 0;  ///< 1 absolute, 2 to 4 relative
    std::int32_t granularityOdtEntrySize = 0;  ///< 1 byte, 2 word, 3 double word, 4 long
    std::int32_t overloadIndication = 0;       ///< 1 none, 2 PID, 3 event
    PhHandle<PhValue> maxDaq;
    PhHandle<PhValue> maxEventChannel;
    PhHandle<PhValue> minDaq;
    PhHandle<PhValue> maxOdtEntrySize;
    bool prescalerSupported = false;
    bool resumeSupported = false;
    bool pidOffSupported = false;
    bool storeDaqSupported = false;
};

/// How a station is reached and measured: three parts, each made at its first use.
class PhStationParam final : public PhObject {
  public:
    PhStationParam() : PhObject(PhClass::StationParam) {}

    PhProtocolParam& protocolParam();
    PhDaqTpCapabilities& daqTpCapabilities();
    PhDaqCapabilities& daqCapabilities();

    /// The same parts without making them: nullptr where there is none yet.
    PhProtocolParam* protocolParamIfAny() const { return protocolParam_.get(); }
    PhDaqTpCapabilities* daqTpCapabilitiesIfAny() const { return daqTpCapabilities_.get(); }
    PhDaqCapabilities* daqCapabilitiesIfAny() const { return daqCapabilities_.get(); }

  private:
    std::unique_ptr<PhProtocolParam> protocolParam_;
    std::unique_ptr<PhDaqTpCapabilities> daqTpCapabilities_;
    std::unique_ptr<PhDaqCapabilities> daqCapabilities_;
};

/// CAN FD settings of an XCP transport; each value is empty when not told.
class PhCanFdParam final : public PhObject {
  public:
    PhCanFdParam() : PhObject(PhClass::CanFdParam) {}

    PhHandle<PhValue> maxDlc;
    PhHandle<PhValue> dataBitrate;  ///< [Hz]
    PhHandle<PhValue> samplePoint;  ///< [%]
    PhHandle<PhValue> btlCycles;
    PhHandle<PhValue> sjw;
    PhHandle<PhValue> syncEdge;              ///< 1 single, 2 dual
    PhHandle<PhValue> secondarySamplePoint;  ///< [%]
    bool maxDlcRequired = false;
    std::int32_t transceiverDelayCompensation = 0;  ///< 1 on
};

/// A FlexRay buffer of an XCP transport.
class PhFlexRayBuffer final : public PhObject {
  public:
    PhFlexRayBuffer() : PhObject(PhClass::FlexRayBuffer) {}

    std::int32_t role = 0;  ///< 1 initial command, 2 initial response and error, 3 pool
    PhHandle<PhValue> number;
    PhHandle<PhValue> maxLength;
    PhHandle<PhValue> slotId;
    PhHandle<PhProperties> properties;  ///< further settings, empty handle when there are none
};

/// One way of reaching the station.
class PhTransportParam final : public PhObject {
  public:
    PhTransportParam() : PhObject(PhClass::TransportParam) {}

    PhTransportType transportType = PhTransportType::Undefined;
    PhString instanceName;
    PhHandle<PhProperties> properties = makePh<PhProperties>();
    PhHandle<PhValue> slaveCanId;      ///< control unit to logger (DTO)
    PhHandle<PhValue> masterCanId;     ///< logger to control unit (CRO)
    PhHandle<PhValue> stationAddress;  ///< CCP
    PhHandle<PhCanFdParam> canFd;
    PhObjectList<PhFlexRayBuffer> flexRayBuffers;

    /// What this transport overrides; made at first use.
    PhStationParam& stationParam();
    PhStationParam* stationParamIfAny() const { return stationParam_.get(); }

  private:
    PhHandle<PhStationParam> stationParam_;
};

/// The settings of one protocol on one module, named after the protocol.
class PhCommParam final : public PhObject {
  public:
    PhCommParam() : PhObject(PhClass::CommParam) {}

    PhProtocolType protocolType = PhProtocolType::Undefined;
    PhHandle<PhStationParam> stationParam = makePh<PhStationParam>();
    PhObjectList<PhTransportParam> transports;
};

/// A memory segment, or a page of one.
class PhMemoryPage final : public PhObject {
  public:
    PhMemoryPage() : PhObject(PhClass::MemoryPage) {}

    PhSegmentUse use = PhSegmentUse::Undefined;
    PhMemoryType memoryType = PhMemoryType::Undefined;
    PhMemoryAttribute attribute = PhMemoryAttribute::Undefined;
    std::int32_t number = 0;  ///< logical page number (CCP)
    std::int32_t addressExtension = 0;
    std::int32_t address = 0;
    std::int32_t size = 0;  ///< [bytes]
    std::uint32_t flags =
        0;  ///< CCP page flags, one bit per keyword in the order of the protocol's list
};

}  // namespace quillmark
