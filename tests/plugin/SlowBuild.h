#pragma once

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define THUDFORGE_SLOW_BUILD 1
#elif defined(__has_feature)
#define THUDFORGE_SLOW_BUILD (__has_feature(address_sanitizer) || __has_feature(thread_sanitizer))
#else
#define THUDFORGE_SLOW_BUILD 0
#endif

namespace Grimworks {

/// Long tests do this part less of their rounds: 1, or more where a sanitizer watches every access.
inline constexpr int kSlowBuild = THUDFORGE_SLOW_BUILD ? 20 : 1;

} // namespace Grimworks
