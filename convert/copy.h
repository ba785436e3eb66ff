// Copies within one encoding: only line ends and BOMs change.
#pragma once

#include "convert/conversion.h"
#include "core/code_types.h"
#include "core/work_area.h"

namespace jkc {

// A sequence of bytes at the front of a text.
using Front = Bom;
constexpr Front kNothing{{}, 0};

// What may stand at the front of a text of the code type and is not copied: a BOM, or a designation of ASCII, in which JIS
// text starts anyway.
Front front_of_copy(int32_t code_type);

// As _jkc_copy(), _add_bom() and _delete_bom(), gathering in the area.
int32_t copy(JkcContext *ctx, int32_t code_type, const WorkArea &area);
int32_t add_bom(JkcContext *ctx, int32_t dst_type, const WorkArea &area);
int32_t delete_bom(JkcContext *ctx, int32_t dst_type, const WorkArea &area);

// What the output begins with.
Front bom_of_type(int32_t code_type);
void write_front(Conversion &conversion, Front front);

// Pending bytes above which the output of a copy of bytes is handed over.
constexpr size_t kCopyFlushAbove = 8159;
constexpr size_t kBomCopyFlushAbove = 8187; // where a BOM is added or removed

// A copy that sees its input without blocks, behind such a front, and counts losses.
Conversion *make_fed_copy(ConversionRoom &room, JkcContext *ctx, uint8_t *area, int32_t src_type, int32_t dst_type,
                          Losses *losses);

} // namespace jkc
