// Which conversion takes one family of encodings to another.
#pragma once

#include "convert/conversion.h"
#include "core/code_types.h"

namespace jkc {

#define JKC_MAKER(source, target) make_##source##_to_##target
#define JKC_DECLARE_MAKER(source, target) MakeConversion JKC_MAKER(source, target);
JKC_FOR_EACH_CONVERTER(JKC_DECLARE_MAKER, JKC_DECLARE_MAKER)
#undef JKC_DECLARE_MAKER

// What makes the conversion of a pair; null when there is none.
MakeConversion *find_route(int32_t src_type, int32_t dst_type);

} // namespace jkc
