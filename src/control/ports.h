// What a control needs of the world around it.
// SPDX-License-Identifier: MIT
#pragma once

#include "core/file_system.h"
#include "core/image_codec.h"
#include "draw/rasterizer.h"
#include "view/host_window.h"

namespace pixvane {

/// All of them must outlive the control. Window and rasterizer are one control's own.
struct Ports {
    ImageCodec& codec;
    FileSystem& files;
    HostWindow& window;
    Rasterizer& rasterizer;
};

}  // namespace pixvane
