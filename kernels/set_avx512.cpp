// The kernels for processors with AVX-512 (with VBMI and VBMI2).
#define JKC_KERNEL_SET avx512
#include "kernels/avx512.h"
#include "kernels/avx512_classes.h"
#include "kernels/set.h"

namespace jkc {

constinit const Kernels kAvx512Kernels = avx512::make_set("avx512");

} // namespace jkc
