// All kernels, for the vectors of JKC_KERNEL_SET. Whatever is not a template has a namespace of its own for each set:
// the linker takes one of two functions of the same name, and that one may have instructions that the processor lacks.
// That is why nothing here calls functions of other headers, not even of the standard library.
#pragma once

#include "kernels/sets.h"

#include "kernels/count.h"
#include "kernels/count_units.h"
#include "kernels/decode.h"
#include "kernels/encode.h"
#include "kernels/find.h"

namespace jkc::JKC_KERNEL_SET {

constexpr Kernels make_set(const char *name) {
    return {
        .name = name,
        .count_utf8 = count_run<Utf8Count>,
        .count_sjis = count_run<TwoByteCount<OrdinarySjis>>,
        .count_euc = count_run<TwoByteCount<OrdinaryEuc>>,
        .count_utf16be = count_units<true>,
        .count_utf16le = count_units<false>,
        .find_four_bytes = find<FourBytePattern>,
        .find_utf8_marks = find<Utf8MarkPattern>,
        .find_pairs = find<PairPattern>,
        .find_utf16_marks = find<Utf16MarkPattern>,
        .decode_utf8 = decode_bytes<Utf8Decode>,
        .decode_sjis = decode_bytes<TwoByteDecode<SjisCode>>,
        .decode_euc = decode_bytes<TwoByteDecode<EucCode>>,
        .decode_utf16be = decode_utf16<true>,
        .decode_utf16le = decode_utf16<false>,
        .look_up = look_up_characters,
        .encode_legacy = encode_legacy,
        .encode_jis = encode_jis,
        .encode_utf8 = encode_utf8,
        .encode_utf16be = encode_utf16<true>,
        .encode_utf16le = encode_utf16<false>,
    };
}

} // namespace jkc::JKC_KERNEL_SET
