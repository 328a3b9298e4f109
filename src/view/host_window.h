// The ports through which the control reaches the window that it lives in, and the clipboard.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "core/byte_buffer.h"

namespace pixvane {

class HostWindow {
public:
    virtual ~HostWindow() = default;
    /// The view has changed and wants to be shown.
    virtual void frame_ready() = 0;
    /// Starts a timer that ticks every `milliseconds`, or changes the interval of one that runs.
    virtual void start_timer(std::int32_t id, std::int32_t milliseconds) = 0;
    virtual void stop_timer(std::int32_t id) = 0;
    virtual void set_capture(bool captured) = 0;
    /// 0 is the arrow; the other numbers are the control's own cursors.
    virtual void set_cursor(std::int32_t cursor) = 0;
};

class SystemClipboard {
public:
    virtual ~SystemClipboard() = default;
    /// Offers the bytes of a BMP file. False if the clipboard takes none.
    virtual bool offer(ByteSpan bmpFile) = 0;
    /// The bytes of a picture file that another program offers. False if there is none.
    virtual bool request(ByteBuffer& file) = 0;
};

}  // namespace pixvane
