#pragma once

#ifndef JKC_INTERNAL_API
#define JKC_INTERNAL_API
#endif
#include "jkc.h"

/**
 * Exports a std::array as the C array that jkc.h declares, with its entry count.
 *
 * A constexpr function can return a std::array but no C array, and both cannot be declared under one name. So the data
 * gets a name of its own for the assembler, and the C array is an alias of it: same address, same size.
 */
#define JKC_EXPORT_TABLE(name, count, entries)                                                                         \
    [[gnu::used]] static constexpr auto name##_data asm(#name ".data") = entries;                                      \
    extern "C" const decltype(name##_data)::value_type name[name##_data.size()] __attribute__((alias(#name ".data"))); \
    extern "C" const uint64_t name##_size = count;                                                                     \
    static_assert((count) <= name##_data.size())
