// The bytes that a text was before it was read as some encoding.
#pragma once

#include "convert/encode_euc.h"
#include "convert/encode_sjis.h"
#include "tables/single_bytes.h"

namespace jkc {

// Stands where a byte is lost, or several: no encoding that texts are in has it.
constexpr uint8_t kLostByte = 0xFF;

// The table of an encoding of a byte a character: a JkcMisreadAs.
SingleByteSet single_byte_set(int32_t read_as);

class BytesAgain {
public:
    static constexpr size_t kLongest = 3; // of a character

    explicit BytesAgain(int32_t read_as);

    // Writes the bytes of a character beyond ASCII and returns the place behind them; null: it has none.
    uint8_t *put(uint8_t *o, uint32_t c);

private:
    int32_t read_as_;
    JkcContext ctx_ = {};
    SjisEncoder sjis_;
    EucEncoder<Cascade::kNone> euc_;
};

} // namespace jkc
