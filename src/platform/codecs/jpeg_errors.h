// How libjpeg's errors come back to us.
// SPDX-License-Identifier: MIT
#pragma once

#include <csetjmp>
#include <cstddef>
#include <cstdio>

#include <jpeglib.h>

namespace pixvane::codecs {

/// libjpeg leaves a failed call by a long jump. A function that sets the jump holds nothing with a
/// destructor, and keeps what it needs afterwards in its object, not in local variables.
struct JpegErrors {
    jpeg_error_mgr base;
    std::jmp_buf jump;

    jpeg_error_mgr* install() {
        jpeg_std_error(&base);
        base.error_exit = [](j_common_ptr info) {
            std::longjmp(reinterpret_cast<JpegErrors*>(info->err)->jump, 1);
        };
        base.emit_message = [](j_common_ptr, int) {};
        base.output_message = [](j_common_ptr) {};
        return &base;
    }
};
static_assert(offsetof(JpegErrors, base) == 0);

}  // namespace pixvane::codecs
