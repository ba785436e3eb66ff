// Undoes one misreading.
#pragma once

#include <span>

#include "core/internal.h"
#include "mend/text_buffer.h"

namespace jkc {

enum class Undone : uint8_t {
    kAll,
    kFull,  // there was no room, or no memory, for more
    kNoWay, // the text was not read so
};

// The text must be UTF-8. What no character could be made of is added to `damage`, as in judge/language.h.
Undone undo(JkcMisreading misreading, std::span<const uint8_t> text, TextBuffer &undone, int64_t &damage);

} // namespace jkc
