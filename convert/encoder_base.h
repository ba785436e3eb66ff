// What encoders have in common, and what each must have.
//
// Every function takes the place where output goes on and returns the place behind what it wrote. A step of a decoder
// writes at most Encoder::kLongestStep bytes; finish() may write as many again. Encoders are copied and assigned in hot
// loops.
//
//   kIsUnicode               whether the target is a Unicode form, which may begin with a BOM: bom(o)
//   kFlushAbove              pending bytes above which output is handed over
//   kLongestStep             see above
//   kAsciiWidth              bytes of an ASCII character
//   ascii(o, b)              an ASCII character
//   ascii_wide(o, text)      sixteen of them behind ascii(); may be taken back in part
//   line_end(o, end)         a line end of none to two bytes
//   put(o, c)                a BMP character that is not ASCII; null, with nothing written, when it is unmappable, or when
//                            what the table has for it would not be read as a character
//   put_lossy(o, c)          when put() answers null: what the table has all the same, or null
//   is_lossy(c)              whether put_mixed() does not tell such a character
//   put_mixed(o, c)          the same, for ASCII too
//   put_supplementary(o, c)  a character beyond the BMP; null as above
//   katakana(o, b)           a half-width katakana by its Shift_JIS byte (legacy targets)
//   replacement(o)           for what is unmappable or ill-formed
//   table_replacement()      the replacement that the table itself has, or 0; put_table_replacement(o) writes it (legacy
//                            targets)
//   raw(o, p, length)        bytes as they stand
//   finish(o)                closes the output
//
// An encoder that keeps a code point back, because the next one may combine with it, writes it before anything else is
// written, by whichever of these functions; when put() finds a character unmappable, it keeps the code point but
// combines it no more.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace jkc {

class EncoderBase {
public:
    // What suits a legacy target.
    static constexpr bool kIsUnicode = false;
    static constexpr size_t kAsciiWidth = 1;

    static uint8_t *put_supplementary(uint8_t * /*o*/, uint32_t /*c*/) { return nullptr; }
    static uint8_t *put_lossy(uint8_t * /*o*/, uint32_t /*c*/) { return nullptr; }
    static constexpr bool is_lossy(uint32_t /*c*/) { return false; }
    static uint8_t *raw(uint8_t *o, const uint8_t *p, size_t length) {
        memcpy(o, p, length);
        return o + length;
    }
    static uint8_t *finish(uint8_t *o) { return o; }
};

} // namespace jkc
