/**
 * @file jkc/tables.h
 * @brief The mapping tables between Unicode and the legacy code types. Part of jkc.h.
 *
 * A table is indexed by a code and holds what that code becomes, 0 where it becomes nothing. `name_size` counts the
 * entries of the table `name`. The tables never change. Threads: any.
 */
#ifndef JKC_TABLES_H
#define JKC_TABLES_H

#include "../jkc.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Declares a table of such entries, and its size. */
#define JKC_TABLE(entry, name)                                                                                         \
    JKC_API extern const entry name[];                                                                                 \
    JKC_API extern const uint64_t name##_size

/** @name From Unicode, indexed by code point. A code of two bytes has the lead byte in the high ones. */
/** @{ */
JKC_TABLE(uint16_t, _unibe2sjis932_table);       /**< Shift_JIS */
JKC_TABLE(uint16_t, _unibe2jis50221_table);      /**< JIS */
JKC_TABLE(uint16_t, _unibe2jis2022jp2004_table); /**< JIS2004 */
JKC_TABLE(uint16_t, _unibe2euccommon_table);     /**< EUC */
JKC_TABLE(uint16_t, _unibe2euc51932_table);      /**< code page 51932 */
JKC_TABLE(uint32_t, _unibe2euc20932_table);      /**< code page 20932, with codes of three bytes */
JKC_TABLE(uint32_t, _unibe2eucms_table);         /**< eucJP-ms, with codes of three bytes */
/** @} */

/** @name From Unicode beyond the BMP: entry 0 is that of U+20000 */
/** @{ */
JKC_TABLE(uint16_t, _unibe2jis2022jp2004_table_srg); /**< JIS2004 */
/** @} */

/** @name From Unicode to the designation number of the set that the JIS code belongs to */
/** @{ */
JKC_TABLE(uint8_t, _unibe2jis50221_table_bits);                           /**< JIS */
JKC_TABLE(uint8_t, _unibe2jis2022jp2004_table_bits);                      /**< JIS2004 */
JKC_TABLE(uint8_t, _unibe2jis2022jp2004_table_srg_bits);                  /**< JIS2004, from U+20000 on */
JKC_API extern const uint64_t _unibe2jis2022jp2004_table_srg_bits_offset; /**< 11808; nothing reads it */
/** @} */

/** @name To Unicode, indexed by a code of one or two bytes; entries up to 65535 can be read, whatever the size */
/** @{ */
JKC_TABLE(uint16_t, _sjis2unibe932_table);         /**< Shift_JIS */
JKC_TABLE(uint16_t, _jis2unibe50221_table);        /**< JIS */
JKC_TABLE(uint32_t, _jis2unibe2022jp2004_table01); /**< plane 1 of JIS X 0213, with JIS X 0208 */
JKC_TABLE(uint16_t, _euc2unibecommon_table00);     /**< EUC */
JKC_TABLE(uint16_t, _euc2unibe20932_table00);      /**< code page 20932 */
JKC_TABLE(uint16_t, _euc2unibe51932_table00);      /**< code page 51932 */
JKC_TABLE(uint16_t, _euc2unibems_table00);         /**< eucJP-ms */
/** @} */

/** @name To Unicode, where only the entries that the size counts can be read */
/** @{ */
JKC_TABLE(uint32_t, _jis2unibe2022jp2004_table02);                 /**< plane 2 of JIS X 0213 */
JKC_API extern const uint64_t _jis2unibe2022jp2004_table02_offset; /**< 8480: the JIS code of its entry 0 */
JKC_TABLE(uint16_t, _euc2unibe20932_table8f); /**< code page 20932: the two bytes behind 8F in a code of three bytes */
JKC_TABLE(uint16_t, _euc2unibems_table8f);    /**< the same of eucJP-ms */
/** @} */

/** Class bits of each BMP code point, by which a judgement counts and a conversion composes. */
JKC_TABLE(uint16_t, _unibe_def_table);

#undef JKC_TABLE

#ifdef __cplusplus
}
#endif

#endif /* JKC_TABLES_H */
