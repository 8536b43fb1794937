#pragma once

#include <cstdint>

#include "a2l/reader/enumeration_parameter.h"
#include "a2l/tokens/keyword_tables.h"
#include "model/enumerations.h"

namespace quillmark {

/// What a data type word of the standard means.
struct DataType {
    PhBaseType baseType = PhBaseType::Undefined;
    std::int32_t sizeBits = 0;
};

/// The data types of a measurement.
inline constexpr WordRow<DataType> kMeasurementTypes[] = {
    {kw::word::UBYTE, {}, {PhBaseType::UInteger, 8}},
    {kw::word::SBYTE, {}, {PhBaseType::Integer, 8}},
    {kw::word::UWORD, {}, {PhBaseType::UInteger, 16}},
    {kw::word::SWORD, {}, {PhBaseType::Integer, 16}},
    {kw::word::ULONG, {}, {PhBaseType::UInteger, 32}},
    {kw::word::SLONG, {}, {PhBaseType::Integer, 32}},
    {kw::word::A_UINT64, {}, {PhBaseType::UInteger, 64}},
    {kw::word::A_INT64, {}, {PhBaseType::Integer, 64}},
    {kw::word::FLOAT32_IEEE, {}, {PhBaseType::Ieee32, 32}},
    {kw::word::FLOAT64_IEEE, {}, {PhBaseType::Ieee64, 64}},
};

}  // namespace quillmark
