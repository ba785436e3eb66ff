// Files by their names. What differs between systems about them stands in files.cpp alone.
#pragma once

#include <cstdint>
#include <cstdio>

namespace jkc {

enum class PathKind : int32_t { kNothing = 0, kDirectory = 1, kRegularFile = 2, kOther = 9 };

// What stands at a path.
PathKind kind_of(const char *path);

// As fopen(), and never in text mode, which would change line ends.
FILE *open_to_read(const char *path);
FILE *open_to_write(const char *path);

} // namespace jkc
