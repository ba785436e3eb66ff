// Copies within one encoding: only line ends and BOMs change.
#pragma once

#include "convert/conversion.h"
#include "core/code_types.h"

namespace jkc {

// A sequence of bytes at the front of a text.
using Front = Bom;
constexpr Front kNothing{{}, 0};

// What may stand at the front of a text of the code type and is not copied: a BOM, or a designation of ASCII, in which JIS
// text starts anyway.
Front front_of_copy(int32_t code_type);

// A copy that sees its input without blocks, behind such a front.
Conversion *make_fed_copy(ConversionRoom &room, JkcContext *ctx, uint8_t *area, int32_t src_type, int32_t dst_type);

} // namespace jkc
