// The codes of characters that code page 932 and its kin have at several codes, where these are not the ones that are
// written back: the mapping tables have no character for them.
#pragma once

#include <cstdint>

namespace jkc {

// The character of such a code, or 0.
uint32_t other_sjis_code(uint32_t sjis);
uint32_t other_jis_code(uint32_t jis);    // of code page 50221: rows 13 and 92
uint32_t other_euc_ms_code(uint32_t euc); // of eucJP-ms, behind SS3

// The first other code of the character that a code of Shift_JIS writes; 0: it has none.
uint32_t sjis_code_beside(uint32_t sjis);

} // namespace jkc
