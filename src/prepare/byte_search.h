#pragma once

#include <bit>
#include <cstddef>
#include <string_view>

#if defined(__SSE2__) || defined(_M_X64)
#define QM_PREPARE_HAS_SSE2
#include <emmintrin.h>
#endif

namespace quillmark::preparing {

/// Where the next byte stands with which something can begin that is not read over: a text, a
/// comment, `/begin`, `/end`, `/include`, or one of the bytes 1 and 2 that the reader takes for two
/// of these. Nowhere: npos.
inline std::size_t findMark(std::string_view text, std::size_t from) {
#ifdef QM_PREPARE_HAS_SSE2
    constexpr std::size_t kStep = 16;
    const __m128i quotes = _mm_set1_epi8('"');
    const __m128i slashes = _mm_set1_epi8('/');
    const __m128i ones = _mm_set1_epi8(1);
    for (; from + kStep <= text.size(); from += kStep) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + from));
        // 1 and 2, less 1, are the bytes that are not above 1.
        const __m128i lowered = _mm_sub_epi8(bytes, ones);
        const __m128i codes = _mm_cmpeq_epi8(_mm_min_epu8(lowered, ones), lowered);
        const auto found = static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(
            codes, _mm_or_si128(_mm_cmpeq_epi8(bytes, quotes), _mm_cmpeq_epi8(bytes, slashes)))));
        if (found != 0) {
            return from + static_cast<std::size_t>(std::countr_zero(found));
        }
    }
#endif
    for (; from < text.size(); ++from) {
        if (text[from] == '"' || text[from] == '/' || text[from] == '\1' || text[from] == '\2') {
            return from;
        }
    }
    return std::string_view::npos;
}

}  // namespace quillmark::preparing
