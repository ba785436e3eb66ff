// Converts input that lies in the context's blocks as a whole, for a writer.
#pragma once

#include "convert/conversion.h"
#include "core/work_area.h"
#include "judge/input/block_cursor.h"

namespace jkc {

// Stores the status in the context and returns it.
int32_t end_with(JkcContext *ctx, int32_t status);

// Runs a conversion over what the cursor has left.
int32_t convert_blocks(JkcContext *ctx, BlockCursor &cursor, Conversion &conversion);

// A converter: makes the conversion and runs it over all blocks. EALLOC when memory is short.
int32_t convert_all(JkcContext *ctx, MakeConversion *make, bool add_bom, const WorkArea &area = WorkArea());

} // namespace jkc
