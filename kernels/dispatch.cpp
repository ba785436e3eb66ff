// Chooses the kernels.
#include <atomic>
#include <cstdlib>
#include <cstring>

#include "kernels/sets.h"

namespace jkc {

namespace {

constexpr Kernels kPlain = {.name = "plain"};

#if defined(JKC_HAVE_AVX2)
// These ask the operating system too, whether it saves the registers.
bool has_avx2() {
    return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi") && __builtin_cpu_supports("bmi2") &&
           __builtin_cpu_supports("popcnt");
}
#endif
#if defined(JKC_HAVE_AVX512)
bool has_avx512() {
    return __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512vl") &&
           __builtin_cpu_supports("avx512vbmi") && __builtin_cpu_supports("avx512vbmi2");
}
#endif

constexpr size_t kMostSets = 3;

// Fills `sets`; returns the last one.
const Kernels *find_sets(const Kernels *(&sets)[kMostSets + 1]) {
    size_t count = 0;
    sets[count++] = &kPlain;
#if defined(JKC_HAVE_AVX2)
    __builtin_cpu_init();
    if (has_avx2()) {
        sets[count++] = &kAvx2Kernels;
#if defined(JKC_HAVE_AVX512)
        if (has_avx512()) {
            sets[count++] = &kAvx512Kernels;
        }
#endif
    }
#endif
    sets[count] = nullptr;
    return sets[count - 1];
}

const Kernels *choose() {
    const Kernels *sets[kMostSets + 1];
    const Kernels *widest = find_sets(sets);
    const char *wanted = getenv("JKC_KERNELS");
    for (const Kernels *const *set = sets; wanted != nullptr && *set != nullptr; ++set) {
        if (strcmp((*set)->name, wanted) == 0) {
            return *set;
        }
    }
    return widest;
}

std::atomic<const Kernels *> used = nullptr;

} // namespace

const Kernels &kernels() {
    const Kernels *set = used.load(std::memory_order_relaxed);
    if (set == nullptr) [[unlikely]] {
        set = choose(); // the same for every thread that comes here
        used.store(set, std::memory_order_relaxed);
    }
    return *set;
}

const Kernels *const *kernel_sets() {
    static const Kernels *sets[kMostSets + 1]; // filled with the same by whoever comes here
    find_sets(sets);
    return sets;
}

void use_kernels(const Kernels &set) { used.store(&set, std::memory_order_relaxed); }

} // namespace jkc
