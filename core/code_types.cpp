// Names of the code types, and the sets of them.
#include <cctype>
#include <cstring>

#include "core/internal.h"

// Row number and code type are the same. The two rows that have no code type carry type 0 and an empty mask: no
// search by type or mask finds them, a search by name does.
extern const JkcTypeName _typeNames[] = {
    {0x0, JKC_TYPE_EMPTY, "Empty"},
    {0x40, JKC_TYPE_ASCII, "ASCII"},
    {0x80, JKC_TYPE_JIS, "JIS(CP50221)"},
    {0x100, JKC_TYPE_JIS2004, "JIS2(ISO-2022)"},
    {0x200, JKC_TYPE_SJIS, "SJIS"},
    {0x400, JKC_TYPE_EUC, "EUC"},
    {0x800, JKC_TYPE_EUC_20932, "EUC1(CP20932)"},
    {0x1000, JKC_TYPE_EUC_51932, "EUC2(CP51932)"},
    {0x2000, JKC_TYPE_EUC_MS, "EUC3(EUC-MS)"},
    {0x0, JKC_TYPE_EMPTY, "DUMMY1"},
    {0x0, JKC_TYPE_EMPTY, "DUMMY2"},
    {0x4000, JKC_TYPE_UTF16BE, "UTF16BE"},
    {0x8000, JKC_TYPE_UTF16BE_BOM, "UTF16BE_BOM"},
    {0x10000, JKC_TYPE_UTF16LE, "UTF16LE"},
    {0x20000, JKC_TYPE_UTF16LE_BOM, "UTF16LE_BOM"},
    {0x40000, JKC_TYPE_UTF8, "UTF8"},
    {0x80000, JKC_TYPE_UTF8_BOM, "UTF8_BOM"},
};
extern const uint64_t _typeNamesSize = sizeof _typeNames / sizeof _typeNames[0];

namespace {

constexpr char kUnknown[] = "Unknown";
constexpr int kLowestMask = 64;      // every smaller number is a single code type
constexpr size_t kLongestName = 255; // what jkc_nameto_type compares of a name

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
    if (mask_or_type < kLowestMask) {
        return jkc_typeto_name(buf, mask_or_type);
    }
    const auto mask = static_cast<uint32_t>(mask_or_type);
    return join_names(buf, size, [mask](const JkcTypeName &row) { return (row.mask & mask) != 0; });
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
    const auto is_marked_form = [](int plain, int marked) {
        return marked == plain + 1 &&
               (plain == JKC_TYPE_UTF16BE || plain == JKC_TYPE_UTF16LE || plain == JKC_TYPE_UTF8);
    };
    if (is_marked_form(a, b)) {
        return 1;
    }
    return is_marked_form(b, a) ? -1 : 0;
}
