// Functions that take many bytes at once with the widest instructions that the processor has. Each set of them is
// compiled for its own instructions, in a namespace of its own; which one is used is chosen at run time.
#pragma once

#include <cstddef>
#include <cstdint>

namespace jkc {

// A run of ASCII and ordinary characters.
struct OrdinaryRun {
    const uint8_t *end; // a boundary between characters
    int64_t valid;      // bytes of non-ASCII characters
    int64_t kana;       // bytes of kana
};
// Counts from p, a boundary, to the first character that is neither ASCII nor ordinary or that `end` cuts. Half-width
// katakana are not ordinary here. Nothing behind `end` is read.
using CountRun = OrdinaryRun(const uint8_t *p, const uint8_t *end);

// A run of code units of UTF-16 that form no pairs.
struct UnitRun {
    const uint8_t *end;
    int64_t evidence; // code units with kScanEvidence
    int64_t kana;     // and with kScanKana
};
// Counts from p to where a pair or a special code unit may be in either byte order, or to where less than a step is
// left. Nothing behind `end` is read. `classes` are kScanClasses.
using CountUnits = UnitRun(const uint8_t *p, const uint8_t *end, const uint8_t *classes);

// The first place from p on at which something may begin, or where less than a step is left. Nothing behind `end` is
// read.
using Find = const uint8_t *(const uint8_t *p, const uint8_t *end);

// Null where there is none: plain code serves then.
struct Kernels {
    const char *name;
    CountRun *count_utf8 = nullptr;
    CountRun *count_sjis = nullptr;
    CountRun *count_euc = nullptr;
    CountUnits *count_utf16be = nullptr;
    CountUnits *count_utf16le = nullptr;
    Find *find_four_bytes = nullptr;
    Find *find_utf8_marks = nullptr;
    Find *find_pairs = nullptr;
    Find *find_utf16_marks = nullptr;
};

// The widest set that the processor has. The environment variable JKC_KERNELS, `plain` or `avx2`, allows none beyond
// that one.
const Kernels &kernels();

// For tests: the sets that the processor has, the plain one first, with null behind the last one; and which of them is
// used from now on.
const Kernels *const *kernel_sets();
void use_kernels(const Kernels &set);

} // namespace jkc
