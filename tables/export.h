// Exports the tables as the C arrays that jkc.h declares.
#pragma once

#include "jkc.h"

namespace jkc {

// A text uses one half of most tables. The kernel maps this much of a file around a byte that is read, so only that
// half is brought into memory.
#if defined(__SANITIZE_ADDRESS__) || defined(_WIN32) // has wider gaps for red zones; aligns to 8192 at most
constexpr size_t kTableAlignment = 64;
#define JKC_IN_SECTION_OF_COUNTS
#else
constexpr size_t kTableAlignment = 0x10000;
#define JKC_IN_SECTION_OF_COUNTS [[gnu::section("jkc_table_sizes")]]
#endif

} // namespace jkc

// Exports a std::array as a C array, with its entry count.
//
// A constexpr function can return a std::array but no C array, and one name cannot declare both. So the data has an
// assembler name of its own, and the C array is an alias of it: same address, same size.
//
// The counts lie together, apart from the tables: reading one must not bring pages of its table into memory.
#define JKC_EXPORT_TABLE(name, count, entries)                                                                         \
    [[gnu::used]] alignas(jkc::kTableAlignment) static constexpr auto name##_data asm(#name ".data") = entries;        \
    extern "C" const decltype(name##_data)::value_type name[name##_data.size()] __attribute__((alias(#name ".data"))); \
    [[gnu::used]] JKC_IN_SECTION_OF_COUNTS static constexpr uint64_t name##_count asm(#name ".count") = count;         \
    extern "C" const uint64_t name##_size __attribute__((alias(#name ".count")));                                      \
    static_assert((count) <= name##_data.size())
