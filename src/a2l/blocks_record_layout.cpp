// How values lie in memory: RECORD_LAYOUT.

#include <string_view>
#include <utility>

#include "a2l/core_blocks.h"
#include "a2l/data_type.h"
#include "a2l/reader/enumeration_parameter.h"

namespace quillmark {

namespace {

using namespace kw::core;

/// One component of a record layout: its keyword and what follows it, one character per parameter.
/// n: a number, dropped. d: a data type. s: a size. o: an index order. a: an addressing mode.
/// m: an index mode, dropped unjudged.
struct ComponentRow {
    int keyword;
    std::string_view parameters;
};

constexpr ComponentRow kComponents[] = {
    {FNC_VALUES, "ndma"},
    {IDENTIFICATION, "nd"},
    {AXIS_PTS_X, "ndoa"},
    {AXIS_PTS_Y, "ndoa"},
    {AXIS_PTS_Z, "ndoa"},
    {AXIS_PTS_4, "ndoa"},
    {AXIS_PTS_5, "ndoa"},
    {AXIS_RESCALE_X, "ndnoa"},
    {AXIS_RESCALE_Y, "ndnoa"},
    {AXIS_RESCALE_Z, "ndnoa"},
    {AXIS_RESCALE_4, "ndnoa"},
    {AXIS_RESCALE_5, "ndnoa"},
    {NO_AXIS_PTS_X, "nd"},
    {NO_AXIS_PTS_Y, "nd"},
    {NO_AXIS_PTS_Z, "nd"},
    {NO_AXIS_PTS_4, "nd"},
    {NO_AXIS_PTS_5, "nd"},
    {NO_RESCALE_X, "nd"},
    {NO_RESCALE_Y, "nd"},
    {NO_RESCALE_Z, "nd"},
    {NO_RESCALE_4, "nd"},
    {NO_RESCALE_5, "nd"},
    {FIX_NO_AXIS_PTS_X, "n"},
    {FIX_NO_AXIS_PTS_Y, "n"},
    {FIX_NO_AXIS_PTS_Z, "n"},
    {FIX_NO_AXIS_PTS_4, "n"},
    {FIX_NO_AXIS_PTS_5, "n"},
    {SRC_ADDR_X, "nd"},
    {SRC_ADDR_Y, "nd"},
    {SRC_ADDR_Z, "nd"},
    {SRC_ADDR_4, "nd"},
    {SRC_ADDR_5, "nd"},
    {RIP_ADDR_W, "nd"},
    {RIP_ADDR_X, "nd"},
    {RIP_ADDR_Y, "nd"},
    {RIP_ADDR_Z, "nd"},
    {RIP_ADDR_4, "nd"},
    {RIP_ADDR_5, "nd"},
    {SHIFT_OP_X, "nd"},
    {SHIFT_OP_Y, "nd"},
    {SHIFT_OP_Z, "nd"},
    {SHIFT_OP_4, "nd"},
    {SHIFT_OP_5, "nd"},
    {OFFSET_X, "nd"},
    {OFFSET_Y, "nd"},
    {OFFSET_Z, "nd"},
    {OFFSET_4, "nd"},
    {OFFSET_5, "nd"},
    {DIST_OP_X, "nd"},
    {DIST_OP_Y, "nd"},
    {DIST_OP_Z, "nd"},
    {DIST_OP_4, "nd"},
    {DIST_OP_5, "nd"},
    {RESERVED, "ns"},
    {ALIGNMENT_BYTE, "n"},
    {ALIGNMENT_WORD, "n"},
    {ALIGNMENT_LONG, "n"},
    {ALIGNMENT_INT64, "n"},
    {ALIGNMENT_FLOAT16_IEEE, "n"},
    {ALIGNMENT_FLOAT32_IEEE, "n"},
    {ALIGNMENT_FLOAT64_IEEE, "n"},
    {STATIC_RECORD_LAYOUT, ""},
    {STATIC_ADDRESS_OFFSETS, ""},
};

const ComponentRow* findComponent(int keyword) {
    for (const ComponentRow& row : kComponents) {
        if (row.keyword == keyword) {
            return &row;
        }
    }
    return nullptr;
}

/// Words that are only judged; what they say is not kept.
struct Judged {};

constexpr WordRow<Judged> kSizes[] = {
    {kw::word::BYTE, {}}, {kw::word::WORD, {}}, {kw::word::LONG, {}}};

constexpr WordRow<Judged> kIndexOrders[] = {{kw::word::INDEX_INCR, {}}, {kw::word::INDEX_DECR, {}}};

constexpr WordRow<Judged> kAddressingModes[] = {
    {kw::word::PBYTE, {}},  {kw::word::PWORD, {}},         {kw::word::PLONG, {}},
    {kw::word::DIRECT, {}}, {identifier("PLONGLONG"), {}},
};

/// Reads the parameters of one component; the data type among them, if any, goes into `type`.
void readComponent(BlockReader& reader, std::string_view parameters, DataType& type) {
    for (const char parameter : parameters) {
        switch (parameter) {
            case 'd':
                type = readChoice(reader, kLayoutTypes);
                break;
            case 's':
                readChoice(reader, kSizes);
                break;
            case 'o':
                readChoice(reader, kIndexOrders);
                break;
            case 'a':
                readChoice(reader, kAddressingModes);
                break;
            default:
                reader.next();
                break;
        }
    }
}

}  // namespace

int parseRecordLayout(CoreReader& reader, PhGroup& module) {
    const auto layout = reader.defineNext<PhRecordLayout>();
    layout->line = reader.lineNumber();
    reader.traceBlock("Parse RECORD_LAYOUT\n");
    reader.keepDescribed(module.recordLayouts, layout);
    int kind = reader.next();
    while (kind != END) {
        const ComponentRow* component = findComponent(kind);
        if (component == nullptr) {
            return reader.unexpectedToken(kind);
        }
        DataType type;
        readComponent(reader, component->parameters, type);
        if (kind == FNC_VALUES) {
            auto dataType = makePh<PhType>();
            dataType->baseType = type.baseType;
            dataType->sizeBits = type.sizeBits;
            reader.keep(layout->dataType, std::move(dataType));
        }
        kind = reader.next();
    }
    return reader.closeBlock(RECORD_LAYOUT);
}

}  // namespace quillmark
