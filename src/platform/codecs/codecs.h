// The codec of picture files: every format that can be read, and the five that are written.
// SPDX-License-Identifier: MIT
#pragma once

#include "core/image_codec.h"

namespace pixvane {

/// Knows JPEG, PNG, TIFF, GIF, WebP, BMP, ICO and CUR by their signatures; everything else is left to
/// gdk-pixbuf. Safe to call from any thread.
///
/// What a file that was cut short gives: a JPEG, PNG or GIF gives the rows that are there (the rest is grey
/// in a JPEG, transparent in the others), unless so little is there that it can't hold the picture that its
/// header announces; TIFF, BMP, ICO and WebP fail.
ImageCodec& image_codec();

}  // namespace pixvane
