// Short names for the tables that a context has selected, "none" where table and count do not fit.
#pragma once

#include <string>

#include "core/internal.h"

namespace jkc::testing {

inline std::string euc_source(const JkcContext &c) {
    const auto is = [&c](const uint16_t *two, uint64_t two_size, const uint16_t *three, uint64_t three_size) {
        return c.euc_src_table == two && c.euc_src_table_8f == three && c.euc_src_count == two_size &&
               c.euc_src_count_8f == three_size;
    };
    return is(_euc2unibecommon_table00, _euc2unibecommon_table00_size, nullptr, 0) ? "common"
           : is(_euc2unibe51932_table00, _euc2unibe51932_table00_size, nullptr, 0) ? "51932"
           : is(_euc2unibe20932_table00, _euc2unibe20932_table00_size, _euc2unibe20932_table8f,
                _euc2unibe20932_table8f_size)
               ? "20932"
           : is(_euc2unibems_table00, _euc2unibems_table00_size, _euc2unibems_table8f, _euc2unibems_table8f_size)
               ? "ms"
               : "none";
}

inline std::string jis_source(const JkcContext &c) {
    const auto is = [&c](const void *table, uint64_t size, uint64_t offset) {
        return c.jis_src_table == table && c.jis_src_count == size && c.jis_src_offset == offset;
    };
    return is(_jis2unibe50221_table, _jis2unibe50221_table_size, 0)                    ? "50221"
           : is(_jis2unibe2022jp2004_table01, _jis2unibe2022jp2004_table01_size, 0)    ? "plane1"
           : is(_jis2unibe2022jp2004_table02, _jis2unibe2022jp2004_table02_size, 8480) ? "plane2"
                                                                                       : "none";
}

inline std::string euc_target(const JkcContext &c) {
    const auto is = [&c](const uint16_t *two, const uint32_t *three) {
        return c.euc_dst_table == two && c.euc_dst_table32 == three &&
               c.euc_dst_count == (two != nullptr ? 65510 : 0) && c.euc_dst_count32 == (three != nullptr ? 65510 : 0);
    };
    return is(_unibe2euccommon_table, nullptr)  ? "common"
           : is(_unibe2euc51932_table, nullptr) ? "51932"
           : is(nullptr, _unibe2euc20932_table) ? "20932"
           : is(nullptr, _unibe2eucms_table)    ? "ms"
                                                : "none";
}

// What a judgement leaves in a context.
inline std::string judged_state(const JkcContext &c) {
    std::string state = std::string(c.srg_exists != 0 ? " srg" : "") + (c.utfmac_exists != 0 ? " utfmac" : "");
    state += euc_source(c) != "common" ? " euc=" + euc_source(c) : "";
    return state + (jis_source(c) != "50221" ? " jis=" + jis_source(c) : "");
}

} // namespace jkc::testing
