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

// Behind the last place in front of `end` at which something may begin, or where less than a step is left behind
// `begin`. Up to three bytes behind `end` must be readable.
using FindLast = const uint8_t *(const uint8_t *begin, const uint8_t *end);

// --- Conversion. It goes in batches: a source is decoded to units of UTF-16, these are encoded in a target. Neither takes
// --- what is lost or needs a close look. ---

// The most bytes of a source that are decoded, and the most units that are encoded, at once.
constexpr size_t kMostTogether = 512;
// Arrays of units must have so many more, and the output so many bytes: kernels write beyond what they tell.
constexpr size_t kUnitsBehind = 64;
constexpr size_t kBytesBehind = 64;

// CR and LF where they need a close look, else kNoStop. (In UTF-16 that is U+00FF, which stops for nothing.)
struct LineEndStops {
    static constexpr uint8_t kNoStop = 0xFF;
    uint8_t cr;
    uint8_t lf;
};
struct Decoded {
    const uint8_t *p; // where the first character that was not taken begins
    size_t count;     // of units
    bool stopped;     // there, by something that needs a close look
    bool ascii;       // there, by a stretch of ASCII, which is copied faster
};
// Takes the characters that begin from p on, a boundary, and before `limit`. Up to two bytes from `limit` on must be
// readable. Shift_JIS and EUC are decoded to codes: of one byte, ASCII and half-width katakana, or two.
using Decode = Decoded(const uint8_t *p, const uint8_t *limit, LineEndStops stops, uint16_t *units);

struct LookUpTable {
    const uint16_t *entries;
    uint64_t count;
};
// Replaces codes beyond ASCII by what the table has. Returns how many it took, until one that becomes ASCII, nothing, or
// a part of a pair.
using LookUp = size_t(uint16_t *units, size_t count, LookUpTable table);

struct Encoded {
    size_t count; // of units that were taken
    uint8_t *o;   // behind what was written
};
// Half-width katakana, the overline and the yen sign are not taken, nor what has no code or one of a single byte.
using EncodeLegacy = Encoded(const uint16_t *units, size_t count, uint8_t *o, LookUpTable table);

// The same for a table some of whose codes have three bytes, which are not taken.
struct LongLookUpTable {
    const uint32_t *entries;
    uint64_t count;
};
using EncodeLongLegacy = Encoded(const uint16_t *units, size_t count, uint8_t *o, LongLookUpTable table);

struct JisTables {
    const uint16_t *codes;
    const uint8_t *sets; // the designation of each
    uint64_t count;
};
struct EncodedJis {
    size_t count; // of units that were taken
    uint8_t *o;   // behind what was written
    bool two_byte;
};
// Takes ASCII and JIS X 0208, between which it writes escape sequences; `two_byte` tells which of them is designated.
// What EncodeLegacy does not take, ESC, SO and SI are not taken.
using EncodeJis = EncodedJis(const uint16_t *units, size_t count, uint8_t *o, JisTables tables, bool two_byte);

// Take all units.
using EncodeUnicode = uint8_t *(const uint16_t *units, size_t count, uint8_t *o);

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
    FindLast *find_last_decisive = nullptr;
    Decode *decode_utf8 = nullptr;
    Decode *decode_sjis = nullptr;
    Decode *decode_euc = nullptr;
    Decode *decode_utf16be = nullptr;
    Decode *decode_utf16le = nullptr;
    LookUp *look_up = nullptr;
    EncodeLegacy *encode_legacy = nullptr;
    EncodeLongLegacy *encode_long_legacy = nullptr;
    EncodeJis *encode_jis = nullptr;
    EncodeUnicode *encode_utf8 = nullptr;
    EncodeUnicode *encode_utf16be = nullptr;
    EncodeUnicode *encode_utf16le = nullptr;
};

// The widest set that the processor has. The environment variable JKC_KERNELS, `plain` or `avx2`, allows none beyond
// that one.
const Kernels &kernels();

// For tests: the sets that the processor has, the plain one first, with null behind the last one; and which of them is
// used from now on.
const Kernels *const *kernel_sets();
void use_kernels(const Kernels &set);

} // namespace jkc
