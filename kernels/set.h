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

// A kernel that leaves the upper halves of the registers clean, without which code for SSE2 runs at a third of its speed
// behind it. Compilers mostly see to that, but not all of them always.
template <auto kKernel>
struct Clean;
template <class Result, class... Arguments, Result (*kKernel)(Arguments...)>
struct Clean<kKernel> {
    static Result call(Arguments... arguments) {
        const Result result = kKernel(arguments...);
        _mm256_zeroupper();
        return result;
    }
};

constexpr Kernels make_set(const char *name) {
    return {
        .name = name,
        .count_utf8 = Clean<count_run<Utf8Count>>::call,
        .count_sjis = Clean<count_run<TwoByteCount<OrdinarySjis>>>::call,
        .count_euc = Clean<count_run<TwoByteCount<OrdinaryEuc>>>::call,
        .count_utf16be = Clean<count_units<true>>::call,
        .count_utf16le = Clean<count_units<false>>::call,
        .find_four_bytes = Clean<find<FourBytePattern>>::call,
        .find_utf8_marks = Clean<find<Utf8MarkPattern>>::call,
        .find_pairs = Clean<find<PairPattern>>::call,
        .find_utf16_marks = Clean<find<Utf16MarkPattern>>::call,
        .find_last_decisive = Clean<find_last<DecisivePattern>>::call,
        .decode_utf8 = Clean<decode_bytes<Utf8Decode>>::call,
        .decode_sjis = Clean<decode_bytes<TwoByteDecode<SjisCode>>>::call,
        .decode_euc = Clean<decode_bytes<TwoByteDecode<EucCode>>>::call,
        .decode_utf16be = Clean<decode_utf16<true>>::call,
        .decode_utf16le = Clean<decode_utf16<false>>::call,
        .look_up = Clean<look_up_characters>::call,
        .encode_legacy = Clean<encode_legacy<LookUpTable>>::call,
        .encode_long_legacy = Clean<encode_legacy<LongLookUpTable>>::call,
        .encode_utf8 = Clean<encode_utf8>::call,
        .encode_utf16be = Clean<encode_utf16<true>>::call,
        .encode_utf16le = Clean<encode_utf16<false>>::call,
    };
}

} // namespace jkc::JKC_KERNEL_SET
