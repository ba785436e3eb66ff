// The kernels for processors with AVX-512 (with VBMI and VBMI2).
#define JKC_KERNEL_SET avx512
#include "kernels/avx512.h"
#include "kernels/avx512_classes.h"
#include "kernels/encode_jis.h"
#include "kernels/set.h"

namespace jkc {

constinit const Kernels kAvx512Kernels = [] {
    Kernels set = avx512::make_set("avx512");
    set.encode_jis = avx512::Clean<avx512::encode_jis>::call;
    return set;
}();

} // namespace jkc
