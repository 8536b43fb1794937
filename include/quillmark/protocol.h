#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "quillmark/enumerations.h"
#include "quillmark/export.h"
#include "quillmark/list.h"
#include "quillmark/model.h"
#include "quillmark/number.h"

namespace quillmark {

// How a control unit is reached and measured. Views like those of model.h. A Number is absent where
// the description does not tell it; a plain code is 0 then.

class PhCanFdParam;
class PhCommParam;
class PhDaq;
class PhDaqCapabilities;
class PhDaqPackedMode;
class PhDaqTpCan;
class PhFlexRayBuffer;
class PhOdt;
class PhOdtEntry;
class PhRaster;
class PhStationParam;
class PhTimebase;
class PhTransportParam;

/// A clock or a cycle: `resolution` times the unit of `unit`.
class QUILLMARK_API Timebase {
  public:
    [[nodiscard]] std::int32_t resolution() const noexcept;

    /// XCP: 1 s, 2 ms, 3 us, 4 ns, 5 ps. CCP: the code of the scaling unit as read.
    [[nodiscard]] std::int32_t unit() const noexcept;

    /// Size of a timestamp [bytes].
    [[nodiscard]] Number byteLength() const noexcept;
    [[nodiscard]] bool isFixed() const noexcept;

  private:
    friend struct ViewAccess;
    explicit Timebase(const PhTimebase* timebase) noexcept : timebase_(timebase) {}

    const PhTimebase* timebase_;
};

/// How several samples are packed into one transmission.
class QUILLMARK_API PackedMode {
  public:
    /// 1 grouped by element, 2 by event.
    [[nodiscard]] std::int32_t grouping() const noexcept;

    /// 0 of the last sample, 1 of the first.
    [[nodiscard]] std::int32_t timestamp() const noexcept;

    /// 1 when packing cannot be switched off.
    [[nodiscard]] std::int32_t mandatory() const noexcept;
    [[nodiscard]] Number sampleCount() const noexcept;
    [[nodiscard]] std::vector<Number> alternativeSampleCounts() const;

  private:
    friend struct ViewAccess;
    explicit PackedMode(const PhDaqPackedMode* mode) noexcept : mode_(mode) {}

    const PhDaqPackedMode* mode_;
};

/// An event channel: an XCP event, a CCP raster, a GMLAN source.
class QUILLMARK_API Event {
  public:
    [[nodiscard]] std::string_view name() const noexcept;
    [[nodiscard]] std::string_view shortName() const noexcept;
    [[nodiscard]] Number channel() const noexcept;
    [[nodiscard]] bool isCyclic() const noexcept;
    [[nodiscard]] bool supportsDaq() const noexcept;
    [[nodiscard]] bool supportsStim() const noexcept;

    /// Its cycle; nothing for one that comes at no fixed time.
    [[nodiscard]] std::optional<Timebase> cycle() const noexcept;
    [[nodiscard]] std::optional<Timebase> minCycle() const noexcept;
    [[nodiscard]] Number priority() const noexcept;
    [[nodiscard]] std::optional<PackedMode> packedMode() const noexcept;
    [[nodiscard]] List<Setting> settings() const noexcept;

  private:
    friend struct ViewAccess;
    explicit Event(const PhRaster* event) noexcept : event_(event) {}

    const PhRaster* event_;
};

/// An element of an object descriptor table; addresses and sizes as the protocol counts them.
class QUILLMARK_API OdtEntry {
  public:
    [[nodiscard]] Number number() const noexcept;
    [[nodiscard]] Number address() const noexcept;
    [[nodiscard]] Number addressExtension() const noexcept;
    [[nodiscard]] Number size() const noexcept;

    /// 0xFF: none.
    [[nodiscard]] Number bitOffset() const noexcept;

  private:
    friend struct ViewAccess;
    explicit OdtEntry(const PhOdtEntry* entry) noexcept : entry_(entry) {}

    const PhOdtEntry* entry_;
};

/// An object descriptor table.
class QUILLMARK_API Odt {
  public:
    [[nodiscard]] Number number() const noexcept;
    [[nodiscard]] List<OdtEntry> entries() const noexcept;

  private:
    friend struct ViewAccess;
    explicit Odt(const PhOdt* odt) noexcept : odt_(odt) {}

    const PhOdt* odt_;
};

/// A DAQ list of XCP, a source of CCP or GMLAN.
class QUILLMARK_API DaqList {
  public:
    [[nodiscard]] std::string_view name() const noexcept;
    [[nodiscard]] Number number() const noexcept;

    /// XCP: 1 DAQ, 2 STIM, 3 both.
    [[nodiscard]] std::int32_t direction() const noexcept;

    /// The highest number of tables.
    [[nodiscard]] Number maxOdt() const noexcept;
    [[nodiscard]] Number maxOdtEntries() const noexcept;

    /// Event channel to which it is bound: of XCP where that is fixed, of CCP the raster.
    [[nodiscard]] Number event() const noexcept;
    [[nodiscard]] Number firstPid() const noexcept;

    /// Those that the control unit has filled already.
    [[nodiscard]] List<Odt> odts() const noexcept;

  private:
    friend struct ViewAccess;
    explicit DaqList(const PhDaq* list) noexcept : list_(list) {}

    const PhDaq* list_;
};

/// What the control unit can do in data acquisition.
class QUILLMARK_API Acquisition {
  public:
    /// The clock of timestamps; nothing where there are none.
    [[nodiscard]] std::optional<Timebase> timestamps() const noexcept;
    [[nodiscard]] List<Event> events() const noexcept;
    [[nodiscard]] List<DaqList> daqLists() const noexcept;
    [[nodiscard]] List<Setting> settings() const noexcept;

    /// 1 static, 2 dynamic.
    [[nodiscard]] std::int32_t configType() const noexcept;

    /// 1 to 6, in the order of the protocol's words.
    [[nodiscard]] std::int32_t optimisationType() const noexcept;

    /// 1 free, 2 one per table, 3 one per DAQ list.
    [[nodiscard]] std::int32_t addressExtension() const noexcept;

    /// 1 absolute, 2 to 4 relative.
    [[nodiscard]] std::int32_t identificationFieldType() const noexcept;

    /// 1 byte, 2 word, 3 double word, 4 long.
    [[nodiscard]] std::int32_t granularityOdtEntrySize() const noexcept;

    /// 1 none, 2 PID, 3 event.
    [[nodiscard]] std::int32_t overloadIndication() const noexcept;
    [[nodiscard]] Number maxDaq() const noexcept;
    [[nodiscard]] Number minDaq() const noexcept;
    [[nodiscard]] Number maxEventChannel() const noexcept;
    [[nodiscard]] Number maxOdtEntrySize() const noexcept;
    [[nodiscard]] bool supportsPrescaler() const noexcept;
    [[nodiscard]] bool supportsResume() const noexcept;
    [[nodiscard]] bool supportsPidOff() const noexcept;
    [[nodiscard]] bool supportsStoreDaq() const noexcept;

  private:
    friend struct ViewAccess;
    explicit Acquisition(const PhDaqCapabilities* acquisition) noexcept
        : acquisition_(acquisition) {}

    const PhDaqCapabilities* acquisition_;
};

/// The CAN identifier of a DAQ list.
class QUILLMARK_API DaqCanId {
  public:
    [[nodiscard]] Number daqList() const noexcept;

    /// Absent for a variable one.
    [[nodiscard]] Number canId() const noexcept;

  private:
    friend struct ViewAccess;
    explicit DaqCanId(const PhDaqTpCan* id) noexcept : id_(id) {}

    const PhDaqTpCan* id_;
};

/// The settings of the control unit, either of the whole protocol or what one transport says
/// otherwise.
class QUILLMARK_API Station {
  public:
    [[nodiscard]] ByteOrder byteOrder() const noexcept;
    [[nodiscard]] List<Setting> settings() const noexcept;
    [[nodiscard]] std::optional<Acquisition> acquisition() const noexcept;
    [[nodiscard]] List<DaqCanId> daqCanIds() const noexcept;

  private:
    friend struct ViewAccess;
    explicit Station(const PhStationParam* station) noexcept : station_(station) {}

    const PhStationParam* station_;
};

/// CAN FD settings of an XCP transport.
class QUILLMARK_API CanFd {
  public:
    [[nodiscard]] Number maxDlc() const noexcept;

    /// [Hz]
    [[nodiscard]] Number dataBitrate() const noexcept;

    /// [%]
    [[nodiscard]] Number samplePoint() const noexcept;

    /// [%]
    [[nodiscard]] Number secondarySamplePoint() const noexcept;
    [[nodiscard]] Number btlCycles() const noexcept;
    [[nodiscard]] Number sjw() const noexcept;

    /// 1 single, 2 dual.
    [[nodiscard]] Number syncEdge() const noexcept;
    [[nodiscard]] bool maxDlcRequired() const noexcept;

    /// 1 on.
    [[nodiscard]] std::int32_t transceiverDelayCompensation() const noexcept;

  private:
    friend struct ViewAccess;
    explicit CanFd(const PhCanFdParam* canFd) noexcept : canFd_(canFd) {}

    const PhCanFdParam* canFd_;
};

/// A FlexRay buffer of an XCP transport.
class QUILLMARK_API FlexRayBuffer {
  public:
    /// 1 first command, 2 first response and error, 3 of the pool.
    [[nodiscard]] std::int32_t role() const noexcept;
    [[nodiscard]] Number number() const noexcept;
    [[nodiscard]] Number maxLength() const noexcept;
    [[nodiscard]] Number slotId() const noexcept;
    [[nodiscard]] List<Setting> settings() const noexcept;

  private:
    friend struct ViewAccess;
    explicit FlexRayBuffer(const PhFlexRayBuffer* buffer) noexcept : buffer_(buffer) {}

    const PhFlexRayBuffer* buffer_;
};

/// One way of reaching the control unit.
class QUILLMARK_API Transport {
  public:
    [[nodiscard]] TransportKind kind() const noexcept;

    /// Tells several transports of one kind apart; often empty.
    [[nodiscard]] std::string_view instanceName() const noexcept;

    /// CAN: the identifier from the logger to the control unit, and the one back. Bit 31 marks an
    /// extended identifier.
    [[nodiscard]] Number masterCanId() const noexcept;
    [[nodiscard]] Number slaveCanId() const noexcept;

    /// CCP.
    [[nodiscard]] Number stationAddress() const noexcept;
    [[nodiscard]] std::optional<CanFd> canFd() const noexcept;
    [[nodiscard]] List<FlexRayBuffer> flexRayBuffers() const noexcept;

    /// Bit rate [bit/s], host name, port, ...
    [[nodiscard]] List<Setting> settings() const noexcept;

    /// What this transport says otherwise than its protocol.
    [[nodiscard]] std::optional<Station> station() const noexcept;

  private:
    friend struct ViewAccess;
    explicit Transport(const PhTransportParam* transport) noexcept : transport_(transport) {}

    const PhTransportParam* transport_;
};

/// The settings of one protocol on one module.
class QUILLMARK_API Protocol {
  public:
    [[nodiscard]] ProtocolKind kind() const noexcept;

    /// The text of the kind.
    [[nodiscard]] std::string_view name() const noexcept;
    [[nodiscard]] Station station() const noexcept;
    [[nodiscard]] List<Transport> transports() const noexcept;

  private:
    friend struct ViewAccess;
    explicit Protocol(const PhCommParam* protocol) noexcept : protocol_(protocol) {}

    const PhCommParam* protocol_;
};

}  // namespace quillmark
