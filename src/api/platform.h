// The back ends that a control of this library is put together with.
// SPDX-License-Identifier: MIT
#pragma once

#include "core/file_system.h"
#include "core/image_codec.h"

namespace pixvane {

struct Platform {
    ImageCodec& codec;
    FileSystem& files;
};

/// Made at the first call, with what the process needs of the system set up; lives until its end.
const Platform& platform();

}  // namespace pixvane
