#pragma once

#include "jkc.h"

namespace jkc {

/**
 * The codes that a text has lie in one half of most tables, and systems bring as much as this into memory around a byte
 * that is read: so only that half is.
 */
#if defined(__SANITIZE_ADDRESS__) // takes what is laid out so for the zones that it puts between objects
constexpr size_t kTableAlignment = 64;
#define JKC_IN_SECTION_OF_COUNTS
#else
constexpr size_t kTableAlignment = 0x10000;
#define JKC_IN_SECTION_OF_COUNTS [[gnu::section("jkc_table_sizes")]]
#endif

} // namespace jkc

/**
 * Exports a std::array as the C array that jkc.h declares, with its entry count.
 *
 * A constexpr function can return a std::array but no C array, and both cannot be declared under one name. So the data
 * gets a name of its own for the assembler, and the C array is an alias of it: same address, same size.
 *
 * The counts, of which the same holds, lie together, apart from the tables: reading one must not bring pages of its
 * table into memory.
 */
#define JKC_EXPORT_TABLE(name, count, entries)                                                                         \
    [[gnu::used]] alignas(jkc::kTableAlignment) static constexpr auto name##_data asm(#name ".data") = entries;        \
    extern "C" const decltype(name##_data)::value_type name[name##_data.size()] __attribute__((alias(#name ".data"))); \
    [[gnu::used]] JKC_IN_SECTION_OF_COUNTS static constexpr uint64_t name##_count asm(#name ".count") = count;         \
    extern "C" const uint64_t name##_size __attribute__((alias(#name ".count")));                                      \
    static_assert((count) <= name##_data.size())
