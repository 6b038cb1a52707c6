#pragma once

#if !defined(__has_feature)
#define __has_feature(feature) 0 // clang tells its sanitizers by it, g++ by macros.
#endif

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || __has_feature(address_sanitizer) ||     \
    __has_feature(thread_sanitizer) || __has_feature(memory_sanitizer)
#define TALLYFOLD_UNDER_SANITIZER 1
#else
#define TALLYFOLD_UNDER_SANITIZER 0
#endif

namespace tallyfold {

/// Whether this is built with a sanitizer that reserves terabytes of address space.
inline constexpr bool isUnderSanitizer = TALLYFOLD_UNDER_SANITIZER != 0;

} // namespace tallyfold

#undef TALLYFOLD_UNDER_SANITIZER
