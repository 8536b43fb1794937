#pragma once

namespace quillmark {

/// Whether the address sanitizer watches this build.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr bool kHasAddressSanitizer = true;
#elif defined(__has_feature)
inline constexpr bool kHasAddressSanitizer = __has_feature(address_sanitizer);
#else
inline constexpr bool kHasAddressSanitizer = false;
#endif

}  // namespace quillmark
