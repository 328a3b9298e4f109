// Macro files: bytes to a macro and back.
// SPDX-License-Identifier: MIT
#pragma once

#include "core/byte_buffer.h"
#include "macros/macro_script.h"

namespace pixvane {

// The number of steps in one byte (256 and more wrap), that many codes of 32 bits, and if there are any
// arguments their length in 32 bits and the bytes themselves. Little-endian, no magic.

/// Throws std::bad_alloc.
ByteBuffer encode_macro(const MacroScript& script);
/// False, and an empty script, if the bytes are fewer than 5 or than the numbers in them say. Codes are not
/// checked, and bytes after the arguments are ignored. Throws std::bad_alloc.
bool decode_macro(ByteSpan file, MacroScript& script);

}  // namespace pixvane
