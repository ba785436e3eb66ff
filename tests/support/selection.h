// Short names for the tables that a context has selected; "?" behind one whose count does not fit it.
#pragma once

#include <string>

#include "core/internal.h"

namespace jkc::testing {

inline std::string named(const char *name, bool counts_fit) { return counts_fit ? name : std::string(name) + "?"; }

inline std::string euc_source(const JkcContext &c) {
    struct Row {
        const char *name;
        const uint16_t *two;
        uint64_t two_size;
        const uint16_t *three;
        uint64_t three_size;
    };
    const Row rows[] = {
        {"common", _euc2unibecommon_table00, _euc2unibecommon_table00_size, nullptr, 0},
        {"20932", _euc2unibe20932_table00, _euc2unibe20932_table00_size, _euc2unibe20932_table8f,
         _euc2unibe20932_table8f_size},
        {"51932", _euc2unibe51932_table00, _euc2unibe51932_table00_size, nullptr, 0},
        {"ms", _euc2unibems_table00, _euc2unibems_table00_size, _euc2unibems_table8f, _euc2unibems_table8f_size},
    };
    for (const Row &row : rows) {
        if (c.euc_src_table == row.two && c.euc_src_table_8f == row.three) {
            return named(row.name, c.euc_src_count == row.two_size && c.euc_src_count_8f == row.three_size);
        }
    }
    return "none";
}

inline std::string jis_source(const JkcContext &c) {
    const bool plane2 = c.jis_src_table == _jis2unibe2022jp2004_table02;
    const bool plane1 = c.jis_src_table == _jis2unibe2022jp2004_table01;
    const uint64_t size = plane2   ? _jis2unibe2022jp2004_table02_size
                          : plane1 ? _jis2unibe2022jp2004_table01_size
                                   : _jis2unibe50221_table_size;
    return named(plane2   ? "plane2"
                 : plane1 ? "plane1"
                          : "50221",
                 c.jis_src_count == size && c.jis_src_offset == (plane2 ? 8480U : 0U));
}

inline std::string euc_target(const JkcContext &c) {
    if (c.euc_dst_table32 != nullptr) {
        return named(c.euc_dst_table32 == _unibe2euc20932_table ? "20932" : "ms",
                     c.euc_dst_table == nullptr && c.euc_dst_count == 0 && c.euc_dst_count32 == 65510);
    }
    return named(c.euc_dst_table == _unibe2euccommon_table ? "common" : "51932",
                 c.euc_dst_count == 65510 && c.euc_dst_count32 == 0);
}

// What a judgement leaves in a context.
inline std::string judged_state(const JkcContext &c) {
    std::string state = std::string(c.srg_exists != 0 ? " srg" : "") + (c.utfmac_exists != 0 ? " utfmac" : "");
    state += euc_source(c) != "common" ? " euc=" + euc_source(c) : "";
    return state + (jis_source(c) != "50221" ? " jis=" + jis_source(c) : "");
}

} // namespace jkc::testing
