#pragma once

#include <cstdint>
#include <iterator>
#include <span>

#include "a2l/reader/word_row.h"
#include "a2l/tokens/keyword_tables.h"
#include "model/enumerations.h"

namespace quillmark {

/// What a data type word of the standard means.
struct DataType {
    PhBaseType baseType = PhBaseType::Undefined;
    std::int32_t sizeBits = 0;
};

/// The data types of a record layout. The last one is none of a measurement: a half-precision real,
/// whose values the logger cannot tell by a base type.
inline constexpr WordRow<DataType> kLayoutTypes[] = {
    {kw::word::UBYTE, {PhBaseType::UInteger, 8}},
    {kw::word::SBYTE, {PhBaseType::Integer, 8}},
    {kw::word::UWORD, {PhBaseType::UInteger, 16}},
    {kw::word::SWORD, {PhBaseType::Integer, 16}},
    {kw::word::ULONG, {PhBaseType::UInteger, 32}},
    {kw::word::SLONG, {PhBaseType::Integer, 32}},
    {kw::word::A_UINT64, {PhBaseType::UInteger, 64}},
    {kw::word::A_INT64, {PhBaseType::Integer, 64}},
    {kw::word::FLOAT32_IEEE, {PhBaseType::Ieee32, 32}},
    {kw::word::FLOAT64_IEEE, {PhBaseType::Ieee64, 64}},
    {identifier("FLOAT16_IEEE"), {PhBaseType::Undefined, 16}},
};

/// The data types of a measurement.
inline constexpr auto kMeasurementTypes =
    std::span<const WordRow<DataType>>(kLayoutTypes).first(std::size(kLayoutTypes) - 1);

}  // namespace quillmark
