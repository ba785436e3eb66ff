// The encoders under the names of the converters: _sjisto_utf8() runs what sjis_to<encoders::utf8> makes.
#pragma once

#include "convert/encode_euc.h"
#include "convert/encode_jis.h"
#include "convert/encode_sjis.h"
#include "convert/encode_utf16.h"
#include "convert/encode_utf8.h"
#include "convert/routes.h"

namespace jkc::encoders {

using jis = JisEncoder;
using sjis = SjisEncoder;
using euc = EucEncoder<Cascade::kVariants>;
using unibe = Utf16Encoder<BigEndian>;
using unile = Utf16Encoder<LittleEndian>;
using utf8 = Utf8Encoder;

} // namespace jkc::encoders

// For the lists JKC_CONVERTERS_FROM_...(): defines what makes the conversion of a route. jkc::<source>_to must be there.
#define JKC_DEFINE_MAKER(source, target)                                                                               \
    jkc::Conversion *jkc::JKC_MAKER(source, target)(ConversionRoom & room, JkcContext * ctx, uint8_t * area,           \
                                                    bool add_bom, Losses *losses) {                                    \
        return source##_to<encoders::target>(room, ctx, area, add_bom, losses);                                        \
    }
