// The sets that are compiled for instructions of their own.
#pragma once

#include "kernels/kernels.h"

namespace jkc {

extern const Kernels kAvx2Kernels;
extern const Kernels kAvx512Kernels;

} // namespace jkc
