#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace Grimworks {

inline constexpr int kHostUnknown = 0;
inline constexpr int kHostUnasked = -1; ///< there is no host, or it does not answer

/// Hosts that the plug-in treats in a way of their own; the numbers are those of HostFromProduct.
inline constexpr int kHostWithParamMenu = 1; ///< has a menu of its own for each parameter
inline constexpr int kHostForte = 15;
inline constexpr int kHostAudition = 17;
inline constexpr int kHostOrion = 18;
inline constexpr int kHostSawStudio = 20;

/// Number of the host with this product string, by the first known piece of text that it holds, ignoring
/// case; kHostUnknown if there is none.
[[nodiscard]] int HostFromProduct(std::string_view product);

/// Name of a host's number, "Unknown" if it has none.
[[nodiscard]] std::string_view HostName(int host);

/// Packs a host's version number, decimal digits as in 10203 for 1.2.3: major in the upper 16 bits, then
/// minor and patch in eight each. A negative number gives 0.
[[nodiscard]] std::uint32_t PackHostVersion(std::int64_t version);

/// The line of the about page: "64-bit Plugin Host: NAME (v1.2.3)".
[[nodiscard]] std::string HostInfoText(int host, std::uint32_t packedVersion);

} // namespace Grimworks
