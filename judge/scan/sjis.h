// The scanner that always runs: Shift_JIS characters, JIS escapes, and NUL bytes, which speak for UTF-16.
#pragma once

#include "core/internal.h"
#include "judge/scan/evidence.h"
#include "judge/scan/katakana_runs.h"

namespace jkc {

class SjisScanner {
public:
    // NULs only lower the byte order of UTF-16 that has more errors, which cannot win anyway: without `counts_nuls` they
    // are passed once one was seen.
    SjisScanner(const JkcContext &ctx, bool counts_nuls)
        : table_(ctx.sjis_src_table), count_(ctx.sjis_src_count), classes_(ctx.uni_def_table),
          counts_nuls_(counts_nuls) {}

    // Takes the bytes from p to end; `origin` stands at offset `offset` of the input. Returns where it stopped: at a
    // character that goes on behind `end`.
    const uint8_t *scan(const uint8_t *p, const uint8_t *end, bool last, const uint8_t *origin, int64_t offset);

    Evidence found;
    bool coded = false;       // a NUL or a byte of 0x80 or more was seen
    bool jis_escape = false;  // an escape sequence of CP50221 was seen
    bool jis2004 = false;     // a JIS X 0213 designation was seen while little spoke against it
    int64_t big_units = 0;    // NULs in the high half of a big-endian unit of Latin text
    int64_t little_units = 0; // the same for little-endian

private:
    const uint8_t *scan_text(const uint8_t *p, const uint8_t *end, bool last, const uint8_t *origin, int64_t offset);
    const uint8_t *skip_text(const uint8_t *p, const uint8_t *end) const;
    const uint8_t *take_ordinary_text(const uint8_t *p, const uint8_t *end);
    const uint8_t *take_mapped_codes(const uint8_t *p, const uint8_t *until, const uint8_t *end);
    bool is_latin(uint8_t b) const;
    size_t take_escape(const uint8_t *p, size_t left, int64_t offset);

    const uint16_t *table_;
    uint64_t count_;
    const uint16_t *classes_;
    bool counts_nuls_;
    KatakanaRuns<1> katakana_;
};

} // namespace jkc
