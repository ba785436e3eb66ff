#include "core/work_area.h"

#include <atomic>
#include <cstdlib>

// Output and input are copied in whole cache lines.
alignas(64) JkcBlock _buffser_info;

namespace jkc {

namespace {

std::atomic_flag leased;

} // namespace

WorkArea::WorkArea()
    : block_(leased.test_and_set(std::memory_order_acquire) ? static_cast<JkcBlock *>(malloc(sizeof(JkcBlock)))
                                                            : &_buffser_info) {}

WorkArea::~WorkArea() {
    if (block_ == &_buffser_info) {
        leased.clear(std::memory_order_release);
    } else {
        free(block_);
    }
}

} // namespace jkc
