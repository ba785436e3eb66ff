// The kernels for processors with AVX2.
#define JKC_KERNEL_SET avx2
#include "kernels/avx2.h"
#include "kernels/set.h"

namespace jkc {

constinit const Kernels kAvx2Kernels = avx2::make_set("avx2");

} // namespace jkc
