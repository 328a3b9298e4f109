// The back ends that a control of this library is put together with.
// SPDX-License-Identifier: MIT
#include "api/platform.h"

#include "core/pixel_memory.h"
#include "platform/codecs/codecs.h"
#include "platform/linux/linux_platform.h"

namespace pixvane {

const Platform& platform() {
    static const Platform back = [] {
        PixelMemory::instance().use(linux_page_source());
        install_fork_handler();
        return Platform{image_codec(), linux_file_system()};
    }();
    return back;
}

}  // namespace pixvane
