// The registry of code types: all that the library knows of one by its number. A new code type is a row here.
#pragma once

#include <cstddef>

#include "core/internal.h"

namespace jkc {

// Encodings that share a decoder and an encoder.
enum class Family : uint8_t { kNone, kAscii, kJis, kSjis, kEuc, kUtf16Be, kUtf16Le, kUtf8 };

struct Bom {
    uint8_t bytes[3];
    uint8_t length; // 0: none
};

constexpr Bom bom_of(Family family) {
    switch (family) {
    case Family::kUtf16Be:
        return {{0xFE, 0xFF}, 2};
    case Family::kUtf16Le:
        return {{0xFF, 0xFE}, 2};
    case Family::kUtf8:
        return {{0xEF, 0xBB, 0xBF}, 3};
    default:
        return {{}, 0};
    }
}

using SelectTables = void(JkcContext &);

struct CodeType {
    Family family;
    bool has_bom;                // the form that begins with the BOM of its family
    SelectTables *select_source; // puts the tables to Unicode into the context; null: it needs none
    SelectTables *select_target; // those from Unicode
};

// The row of a code type. A number that is none has the family kNone and nothing else.
const CodeType &code_type(int64_t number);

inline Family family_of(int64_t number) { return code_type(number).family; }
inline bool has_bom(int64_t number) { return code_type(number).has_bom; }
constexpr bool is_utf16(Family family) { return family == Family::kUtf16Be || family == Family::kUtf16Le; }
constexpr bool is_unicode(Family family) { return is_utf16(family) || family == Family::kUtf8; }

void select_source_tables(JkcContext &ctx, int32_t src_type);
// For JIS it depends on ctx.srg_exists which tables these are.
void select_target_tables(JkcContext &ctx, int32_t dst_type);

// What the first bytes of an input are.
struct BomMatch {
    int32_t type;  // the code type whose BOM they are; 0: none
    bool may_grow; // they begin a longer one
};
BomMatch match_bom(const uint8_t *p, size_t length);

// Whether the number is a set of code types. There are two kinds of sets: those of a judgement (JKC_JUDGED_BIT) and those of jkc_multi_type_names(), whose bits have no gap (JkcTypeName::mask).
constexpr bool is_set(int64_t number) { return number >= JKC_LOWEST_SET; }

constexpr int32_t judged_bit(int32_t type) { return JKC_JUDGED_BIT(type); }

} // namespace jkc
