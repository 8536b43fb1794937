#pragma once

#include <array>
#include <string_view>

namespace quillmark {

/// Keywords of which a description has one or more for each of its signals.
inline constexpr std::array<std::string_view, 16> kFrequentKeywords = {"/begin",
                                                                       "/end",
                                                                       "MEASUREMENT",
                                                                       "CHARACTERISTIC",
                                                                       "ECU_ADDRESS",
                                                                       "COMPU_METHOD",
                                                                       "IF_DATA",
                                                                       "VALUE",
                                                                       "FORMAT",
                                                                       "BIT_MASK",
                                                                       "ECU_ADDRESS_EXTENSION",
                                                                       "DISPLAY_IDENTIFIER",
                                                                       "ANNOTATION",
                                                                       "FUNCTION_LIST",
                                                                       "REF_MEASUREMENT",
                                                                       "REF_CHARACTERISTIC"};

}  // namespace quillmark
