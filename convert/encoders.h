// The encoders under the names of the converters, and what defines these: _sjisto_utf8() is sjis_to<encoders::utf8>().
#pragma once

#include "convert/encode_euc.h"
#include "convert/encode_jis.h"
#include "convert/encode_sjis.h"
#include "convert/encode_utf16.h"
#include "convert/encode_utf8.h"

namespace jkc::encoders {

using jis = JisEncoder;
using sjis = SjisEncoder;
using euc = EucEncoder<Cascade::kVariants>;
using unibe = Utf16Encoder<BigEndian>;
using unile = Utf16Encoder<LittleEndian>;
using utf8 = Utf8Encoder;

} // namespace jkc::encoders

// For the lists JKC_CONVERTERS_FROM_...(): where they are expanded, jkc::<source>_to() must be there.
#define JKC_DEFINE_TO_LEGACY(source, target)                                                                           \
    int32_t JKC_CONVERTER(source, target)(JkcContext * ctx) {                                                          \
        return jkc::source##_to<jkc::encoders::target>(ctx, false);                                                    \
    }
#define JKC_DEFINE_TO_UNICODE(source, target)                                                                          \
    int32_t JKC_CONVERTER(source, target)(JkcContext * ctx, bool add_bom) {                                            \
        return jkc::source##_to<jkc::encoders::target>(ctx, add_bom);                                                  \
    }
