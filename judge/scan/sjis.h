// The scanner for Shift_JIS, JIS escape sequences and NULs. Judgement feeds it every block, before the other scanners.
#pragma once

#include "core/internal.h"
#include "judge/scan/evidence.h"
#include "judge/scan/katakana_runs.h"

namespace jkc {

class SjisScanner {
public:
    // Without `counts_nuls`, NULs are skipped in non-ASCII input: they only lower the byte order of UTF-16 that has
    // more errors, which cannot win anyway.
    SjisScanner(const JkcContext &ctx, bool counts_nuls)
        : table_(ctx.sjis_src_table), count_(ctx.sjis_src_count), classes_(ctx.uni_def_table),
          counts_nuls_(counts_nuls) {}

    // Takes the bytes from p to end. Returns where it stopped: at `end`, or at a character that `end` cuts.
    const uint8_t *scan(const uint8_t *p, const uint8_t *end, bool last);

    Origin origin;
    Evidence found;
    bool non_ascii = false;   // a NUL or a byte of 0x80 or more was seen
    bool jis_escape = false;  // an escape sequence of CP50221 was seen
    bool jis2004 = false;     // a JIS X 0213 designation was seen while the errors were tolerable
    int64_t big_units = 0;    // NULs in the high byte of a big-endian code unit of Latin text
    int64_t little_units = 0; // the same for little-endian

private:
    const uint8_t *scan_text(const uint8_t *p, const uint8_t *end, bool last);
    const uint8_t *skip_text(const uint8_t *p, const uint8_t *end) const;
    const uint8_t *take_ordinary_text(const uint8_t *p, const uint8_t *end);
    const uint8_t *take_mapped_codes(const uint8_t *p, const uint8_t *until, const uint8_t *end);
    void add_unmapped(const uint8_t *p);
    bool is_latin(uint8_t b) const;
    size_t take_escape(const uint8_t *p, size_t left, int64_t offset);

    const uint16_t *table_;
    uint64_t count_;
    const uint16_t *classes_;
    bool counts_nuls_;
    KatakanaRuns<1> katakana_;
};

} // namespace jkc
