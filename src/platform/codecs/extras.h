// Colour profiles and resolutions: which profiles are kept, and the units of the formats.
// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>

#include "core/image_codec.h"
#include "platform/codecs/bytes.h"

namespace pixvane::codecs {

constexpr double kMetresPerInch = 0.0254;
constexpr double kCentimetresPerInch = 2.54;
/// Larger ones are no profiles of pictures; also what a compressed one may grow to.
constexpr std::size_t kLargestProfile = std::size_t{16} << 20;

/// Whether the bytes are an ICC profile for RGB pictures; one for another colour space would be wrong for
/// what a decoder makes of the file.
inline bool is_rgb_profile(ByteSpan profile) {
    return profile.size() >= 128 && profile.size() <= kLargestProfile &&
           std::memcmp(profile.data() + 16, "RGB ", 4) == 0 &&
           std::memcmp(profile.data() + 36, "acsp", 4) == 0;
}

inline void keep_profile(ByteSpan profile, FileExtras& extras) {
    if (is_rgb_profile(profile)) extras.iccProfile.assign(profile.begin(), profile.end());
}

/// The profile to write, empty if there is none.
inline ByteSpan profile_of(const EncodeOptions& options) {
    if (options.extras == nullptr || !is_rgb_profile(options.extras->iccProfile)) return {};
    return options.extras->iccProfile;
}

inline double sane_resolution(double dotsPerInch) {
    return dotsPerInch > 0 && dotsPerInch < 1e6 ? dotsPerInch : 0;
}

inline void keep_resolution(double dotsPerInchX, double dotsPerInchY, FileExtras& extras) {
    const double x = sane_resolution(dotsPerInchX);
    const double y = sane_resolution(dotsPerInchY);
    if (x == 0 || y == 0) return;
    extras.dotsPerInchX = x;
    extras.dotsPerInchY = y;
}

struct Resolution {
    double x = 0;
    double y = 0;
    bool known() const { return x > 0 && y > 0; }
};

/// The resolution to write, in dots per inch.
inline Resolution resolution_of(const EncodeOptions& options) {
    if (options.extras == nullptr) return {};
    return {sane_resolution(options.extras->dotsPerInchX), sane_resolution(options.extras->dotsPerInchY)};
}

inline std::uint32_t dots_per_metre(double dotsPerInch) {
    return static_cast<std::uint32_t>(std::lround(dotsPerInch / kMetresPerInch));
}

}  // namespace pixvane::codecs
