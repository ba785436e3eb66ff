// The registry of code types, their names, and sets of them.
#include <cctype>
#include <cstring>
#include <initializer_list>

#include "core/code_types.h"
#include "core/table_selection.h"

namespace {

using namespace jkc;

// The numbers 9 and 10 are not assigned. Their rows keep row number and code type the same; they carry type 0 and an
// empty set bit: no search by type or set finds them, a search by name does.
constexpr bool is_unassigned(int32_t number) { return number == 9 || number == 10; }
constexpr int32_t type_in_row(int32_t number) { return is_unassigned(number) ? JKC_TYPE_EMPTY : number; }

// Bit 6 for code type 1 and so on, without a gap.
constexpr uint32_t set_bit(int32_t number) {
    const int32_t unassigned_before = number > 10 ? 2 : 0;
    return number == JKC_TYPE_EMPTY || is_unassigned(number) ? 0 : 1U << (number - unassigned_before + 5);
}

constexpr bool kBom = true;
constexpr bool kNoBom = false;

// In the order of the numbers. Shift_JIS has one table each way, which a caller may replace: nothing selects it again.
#define JKC_FOR_EACH_CODE_TYPE(X)                                                                                      \
    X(JKC_TYPE_EMPTY, "Empty", kNone, kNoBom, nullptr, nullptr)                                                        \
    X(JKC_TYPE_ASCII, "ASCII", kAscii, kNoBom, nullptr, nullptr)                                                       \
    X(JKC_TYPE_JIS, "JIS(CP50221)", kJis, kNoBom, select_jis_cp50221_source, select_jis_target)                        \
    X(JKC_TYPE_JIS2004, "JIS2(ISO-2022)", kJis, kNoBom, select_jis_2004_source, select_jis_2004_target)                \
    X(JKC_TYPE_SJIS, "SJIS", kSjis, kNoBom, nullptr, nullptr)                                                          \
    X(JKC_TYPE_EUC, "EUC", kEuc, kNoBom, select_euc_source, select_euc_target)                                         \
    X(JKC_TYPE_EUC_20932, "EUC1(CP20932)", kEuc, kNoBom, select_euc_20932_source, select_euc_20932_target)             \
    X(JKC_TYPE_EUC_51932, "EUC2(CP51932)", kEuc, kNoBom, select_euc_51932_source, select_euc_51932_target)             \
    X(JKC_TYPE_EUC_MS, "EUC3(EUC-MS)", kEuc, kNoBom, select_euc_ms_source, select_euc_ms_target)                       \
    X(9, "DUMMY1", kNone, kNoBom, nullptr, nullptr)                                                                    \
    X(10, "DUMMY2", kNone, kNoBom, nullptr, nullptr)                                                                   \
    X(JKC_TYPE_UTF16BE, "UTF16BE", kUtf16Be, kNoBom, nullptr, nullptr)                                                 \
    X(JKC_TYPE_UTF16BE_BOM, "UTF16BE_BOM", kUtf16Be, kBom, nullptr, nullptr)                                           \
    X(JKC_TYPE_UTF16LE, "UTF16LE", kUtf16Le, kNoBom, nullptr, nullptr)                                                 \
    X(JKC_TYPE_UTF16LE_BOM, "UTF16LE_BOM", kUtf16Le, kBom, nullptr, nullptr)                                           \
    X(JKC_TYPE_UTF8, "UTF8", kUtf8, kNoBom, nullptr, nullptr)                                                          \
    X(JKC_TYPE_UTF8_BOM, "UTF8_BOM", kUtf8, kBom, nullptr, nullptr)

#define JKC_ROW(number, name, family, has_bom, source, target) {Family::family, has_bom, source, target},
constexpr CodeType kCodeTypes[] = {JKC_FOR_EACH_CODE_TYPE(JKC_ROW)};
#undef JKC_ROW
constexpr size_t kRows = sizeof kCodeTypes / sizeof kCodeTypes[0];

#define JKC_ROW(number, ...) number,
constexpr int32_t kNumbers[] = {JKC_FOR_EACH_CODE_TYPE(JKC_ROW)};
#undef JKC_ROW
constexpr bool rows_are_in_order() {
    for (size_t row = 0; row < kRows; ++row) {
        if (kNumbers[row] != static_cast<int32_t>(row)) {
            return false;
        }
    }
    return true;
}
static_assert(rows_are_in_order());

// Callers have 16 bytes for a name, as jkc.h promises, and 160 for all of them with a separator each.
#define JKC_ROW(number, name, ...) sizeof name,
constexpr size_t kNameSizes[] = {JKC_FOR_EACH_CODE_TYPE(JKC_ROW)};
#undef JKC_ROW
constexpr bool names_fit() {
    size_t all = 0;
    for (const size_t size : kNameSizes) {
        all += size;
        if (size > 16) {
            return false;
        }
    }
    return all <= 160;
}
static_assert(names_fit());

} // namespace

#define JKC_ROW(number, name, ...) {set_bit(number), type_in_row(number), name},
extern const JkcTypeName _typeNames[] = {JKC_FOR_EACH_CODE_TYPE(JKC_ROW)};
#undef JKC_ROW
extern const uint64_t _typeNamesSize = kRows;

namespace jkc {

const CodeType &code_type(int64_t number) {
    const bool is_row = number >= 0 && number < static_cast<int64_t>(kRows);
    return kCodeTypes[is_row ? number : 0];
}

void select_source_tables(JkcContext &ctx, int32_t src_type) {
    if (SelectTables *select = code_type(src_type).select_source) {
        select(ctx);
    }
}

void select_target_tables(JkcContext &ctx, int32_t dst_type) {
    if (SelectTables *select = code_type(dst_type).select_target) {
        select(ctx);
    }
}

static int32_t type_with_bom(Family family) {
    size_t row = 0;
    while (kCodeTypes[row].family != family || !kCodeTypes[row].has_bom) {
        ++row;
    }
    return static_cast<int32_t>(row);
}

BomMatch match_bom(const uint8_t *p, size_t length) {
    bool may_grow = false;
    for (const Family family : {Family::kUtf16Be, Family::kUtf16Le, Family::kUtf8}) {
        const Bom bom = bom_of(family);
        if (length > bom.length || memcmp(p, bom.bytes, length) != 0) {
            continue;
        }
        if (length == bom.length) {
            return {type_with_bom(family), false};
        }
        may_grow = true;
    }
    return {JKC_TYPE_EMPTY, may_grow};
}

} // namespace jkc

namespace {

constexpr char kUnknown[] = "Unknown";
constexpr size_t kLongestName = 255; // what jkc_nameto_type compares of a name
constexpr size_t kRoomForAllNames = 160;

uint32_t copy_name(char *buf, const char *name) {
    const size_t length = strlen(name);
    memcpy(buf, name, length + 1);
    return static_cast<uint32_t>(length);
}

// Writes the names of the rows that `selects` picks, as many whole ones as fit in size bytes.
template <class Selects>
uint32_t join_names(char *buf, size_t size, Selects selects) {
    if (size == 0) {
        return 0;
    }
    size_t written = 0;
    for (uint64_t row = 1; row < _typeNamesSize; ++row) {
        if (!selects(_typeNames[row])) {
            continue;
        }
        const char *name = _typeNames[row].name;
        const size_t length = strlen(name);
        if (written + length > size) {
            break;
        }
        memcpy(buf + written, name, length);
        written += length;
        if (written + 1 > size) {
            break;
        }
        buf[written++] = ';';
    }
    if (written > 0 && buf[written - 1] == ';') {
        --written;
    }
    buf[written] = '\0';
    return static_cast<uint32_t>(written);
}

} // namespace

uint32_t jkc_typeto_name(char *buf, int code_type) {
    for (uint64_t row = 0; row < _typeNamesSize; ++row) {
        if (_typeNames[row].type == code_type) {
            return copy_name(buf, _typeNames[row].name);
        }
    }
    return copy_name(buf, kUnknown);
}

int jkc_nameto_type(const char *name) {
    char upper[kLongestName + 1];
    size_t length = 0;
    for (; length < kLongestName && name[length] != '\0'; ++length) {
        upper[length] = static_cast<char>(toupper(static_cast<unsigned char>(name[length])));
    }
    upper[length] = '\0';
    // Row 0 is left out: "Empty" names no text that a caller could ask for.
    for (uint64_t row = 1; row < _typeNamesSize; ++row) {
        if (strcmp(upper, _typeNames[row].name) == 0) {
            return _typeNames[row].type;
        }
    }
    return JKC_ECTYPE;
}

uint32_t jkc_multi_type_names(char *buf, size_t size, int mask_or_type) {
    if (size == 0) {
        return 0;
    }
    if (!is_set(mask_or_type)) {
        return jkc_typeto_name(buf, mask_or_type);
    }
    const auto mask = static_cast<uint32_t>(mask_or_type);
    return join_names(buf, size, [mask](const JkcTypeName &row) { return (row.mask & mask) != 0; });
}

uint32_t jkc_judged_type_names(char *buf, size_t size, int judged) {
    char whole[kRoomForAllNames];
    size_t length = 0;
    if (judged == -1) {
        length = copy_name(whole, "None");
    } else if (!is_set(judged)) {
        length = jkc_typeto_name(whole, judged);
    } else {
        // The bits of a judgement leave room for the two rows without a code type; the masks of the rows do not.
        length = join_names(whole, sizeof whole - 1, [judged](const JkcTypeName &row) {
            return row.mask != 0 && (judged & JKC_JUDGED_BIT(row.type)) != 0;
        });
        if (length == 0) {
            length = copy_name(whole, kUnknown);
        }
    }
    if (size == 0) {
        return static_cast<uint32_t>(length);
    }
    size_t written = length;
    if (written >= size) {
        written = size - 1;
        while (written > 0 && whole[written] != ';') { // whole names only
            --written;
        }
    }
    memcpy(buf, whole, written);
    buf[written] = '\0';
    return static_cast<uint32_t>(length);
}

uint32_t jkc_all_type_names(char *buf, size_t size) {
    return join_names(buf, size, [](const JkcTypeName &row) { return row.type != JKC_TYPE_EMPTY; });
}

uint32_t jkc_all_type_names_length() {
    size_t length = 0;
    for (uint64_t row = 1; row < _typeNamesSize; ++row) {
        if (_typeNames[row].type > JKC_TYPE_EMPTY) {
            length += strlen(_typeNames[row].name) + 1;
        }
    }
    return static_cast<uint32_t>(length);
}

int jkc_cmp_bom(int a, int b) {
    const Family family = family_of(a);
    if (family == Family::kNone || family != family_of(b)) {
        return 0;
    }
    return static_cast<int>(has_bom(b)) - static_cast<int>(has_bom(a));
}
