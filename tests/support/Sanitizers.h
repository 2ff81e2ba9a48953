// Which sanitizers a test runs under, for what they change or are needed for.
#pragma once

#if defined( __has_feature )
#define TEST_SANITIZED( feature ) __has_feature( feature )
#else
#define TEST_SANITIZED( feature ) 0
#endif

namespace TestSupport {

#ifdef __SANITIZE_ADDRESS__
inline constexpr bool underAddressSanitizer = true;
#else
inline constexpr bool underAddressSanitizer = TEST_SANITIZED( address_sanitizer );
#endif

#ifdef __SANITIZE_THREAD__
inline constexpr bool underThreadSanitizer = true;
#else
inline constexpr bool underThreadSanitizer = TEST_SANITIZED( thread_sanitizer );
#endif

} // namespace TestSupport

#undef TEST_SANITIZED
