#include "a2l/interfaces/xcp_time.h"

#include <cstddef>
#include <iterator>

#include "a2l/interfaces/interface_parts.h"

namespace quillmark {

namespace {

using namespace kw::xcp;

/// The index of a row is the unit's code. The keyword table lacks two of the words.
constexpr WordRow<XcpTimeUnit> kTimeUnits[] = {
    {UNIT_1NS, {4, 1}},
    {UNIT_10NS, {4, 10}},
    {UNIT_100NS, {4, 100}},
    {UNIT_1US, {3, 1}},
    {UNIT_10US, {3, 10}},
    {UNIT_100US, {3, 100}},
    {UNIT_1MS, {2, 1}},
    {UNIT_10MS, {2, 10}},
    {UNIT_100MS, {2, 100}},
    {UNIT_1S, {1, 1}},
    {identifier("UNIT_1PS"), {5, 1}},
    {identifier("UNIT_10PS"), {5, 10}},
    {UNIT_100PS, {5, 100}},
};

}  // namespace

std::optional<XcpTimeUnit> xcpTimeUnitOfCode(std::int32_t code) {
    if (code < 0 || static_cast<std::size_t>(code) >= std::size(kTimeUnits)) {
        return std::nullopt;
    }
    return kTimeUnits[code].value;
}

std::optional<XcpTimeUnit> xcpTimeUnitOfWord(const BlockReader& reader, int kind) {
    return findWord(reader, kTimeUnits, kind);
}

PhHandle<PhTimebase> makeTimebase(std::int32_t ticks, XcpTimeUnit unit) {
    auto timebase = makePh<PhTimebase>();
    timebase->resolution = static_cast<std::int32_t>(std::int64_t{ticks} * unit.factor);
    timebase->scale = unit.code;
    return timebase;
}

PhHandle<PhTimebase> readTimeCycle(BlockReader& reader) {
    const PhNumber cycle = readNumberIfAny(reader);
    const PhNumber code = readNumberIfAny(reader);
    if (!cycle.isPresent() || !code.isPresent()) {
        reader.fail("Could not read TIME_CYCLE or TIME_UNIT");
        return {};
    }
    const std::optional<XcpTimeUnit> unit = xcpTimeUnitOfCode(code.toInteger());
    if (!unit) {
        reader.fail("Could not convert TIME_UNIT");
        return {};
    }
    return makeTimebase(cycle.toInteger(), *unit);
}

}  // namespace quillmark
