// The encoder of EUC-JP, in the variant whose table the context has selected.
#pragma once

#include <initializer_list>

#include "convert/byte_encoder.h"
#include "core/code_types.h"

namespace jkc {

// What happens to a character that is unmappable in the generic table.
enum class Cascade : bool {
    kNone,     // nothing
    kVariants, // the variants are tried; the first that has it stays selected in the context
};

template <Cascade kCascade>
class EucEncoder : public ByteEncoder {
public:
    static constexpr size_t kFlushAbove = 8188;
    static constexpr size_t kLongestStep = 3;

    explicit EucEncoder(JkcContext *ctx) : ctx_(ctx) { load(); }

    // The output shall be readable in the variant that was asked for.
    void stay_in_table() { stays_in_table_ = true; }

    // A half-width katakana, given as its Shift_JIS byte.
    uint8_t *katakana(uint8_t *o, uint8_t b) {
        o[0] = kSs2;
        o[1] = b;
        return o + 2;
    }

    // Writes a BMP character; null, with nothing written, when it is unmappable.
    uint8_t *put(uint8_t *o, uint32_t c) {
        uint32_t code = look_up(c);
        if (code - 1 < 0xFF) [[unlikely]] {
            return is_lossy(c) ? nullptr : write(o, code);
        }
        if (code == 0) [[unlikely]] {
            code = is_lossy(c) ? 0 : try_variants(c);
            if (code == 0) {
                return nullptr;
            }
        }
        return write(o, code);
    }
    // C1 control characters become single bytes, which begin no character. A variant that has one is selected all the
    // same.
    static constexpr bool is_lossy(uint32_t c) { return c >= 0x80 && c <= 0x9F; }
    uint8_t *put_lossy(uint8_t *o, uint32_t c) {
        uint32_t code = is_lossy(c) ? look_up(c) : 0;
        code = code == 0 && is_lossy(c) ? try_variants(c) : code;
        return code != 0 ? write(o, code) : nullptr;
    }

    // As put(), for text in which ASCII, which needs no table, and other characters alternate.
    uint8_t *put_mixed(uint8_t *o, uint32_t c) {
        const uint32_t found = look_up(c);
        const uint32_t code = select(c < 0x80, c, found);
        if ((code == 0 && c != 0) || code > 0xFFFF) [[unlikely]] {
            return put(o, c);
        }
        return one_or_two(o, code);
    }

    Encoded encode(const uint16_t *units, size_t count, uint8_t *o) const {
        return table32_ != nullptr ? kernels().encode_long_legacy(units, count, o, {table32_, count_})
                                   : kernels().encode_legacy(units, count, o, {table_, count_});
    }

    // The replacement that the table has in the entry of U+0000, or 0.
    uint32_t table_replacement() const { return look_up(0); }
    uint8_t *put_table_replacement(uint8_t *o) { return write(o, look_up(0)); }

private:
    void load() {
        table_ = ctx_->euc_dst_table;
        table32_ = ctx_->euc_dst_table32;
        count_ = table32_ != nullptr ? ctx_->euc_dst_count32 : ctx_->euc_dst_count;
    }

    uint32_t look_up(uint32_t c) const {
        if (c >= count_) {
            return 0;
        }
        return table32_ != nullptr ? table32_[c] : table_[c];
    }

    static uint8_t *write(uint8_t *o, uint32_t code) {
        if (code > 0xFFFF) {
            *o++ = static_cast<uint8_t>(code >> 16);
        } else if (code < 0x100) {
            *o = static_cast<uint8_t>(code);
            return o + 1;
        }
        o[0] = static_cast<uint8_t>(code >> 8);
        o[1] = static_cast<uint8_t>(code);
        return o + 2;
    }

    // In this order. The first that has the character stays selected, so that a text is written in one variant from then
    // on.
    [[gnu::cold]] uint32_t try_variants(uint32_t c) {
        if (kCascade == Cascade::kNone || stays_in_table_ || table_ != _unibe2euccommon_table) {
            return 0;
        }
        for (const int32_t type : {JKC_TYPE_EUC_20932, JKC_TYPE_EUC_51932, JKC_TYPE_EUC_MS, JKC_TYPE_EUC}) {
            select_target_tables(*ctx_, type);
            load();
            if (const uint32_t code = look_up(c)) {
                return code;
            }
        }
        return 0; // back to the generic table
    }

    JkcContext *ctx_;
    bool stays_in_table_ = false;
    const uint16_t *table_ = nullptr;
    const uint32_t *table32_ = nullptr;
    uint64_t count_ = 0;
};

} // namespace jkc
