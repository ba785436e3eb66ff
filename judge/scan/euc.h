// The scanner for EUC-JP and its flavours.
#pragma once

#include "core/internal.h"
#include "judge/scan/evidence.h"
#include "judge/scan/katakana_runs.h"
#include "tables/euc_classes.h"

namespace jkc {

class EucScanner {
public:
    explicit EucScanner(JkcContext *ctx) : ctx_(ctx) {}

    // Takes the bytes from p to end. Returns where it stopped: at a character that goes on behind `end`.
    const uint8_t *scan(const uint8_t *p, const uint8_t *end, bool last);

    // As scan(), but counts nothing and only keeps the table selection as scan() would leave it. For input that is_out().
    const uint8_t *watch(const uint8_t *p, const uint8_t *end);

    // Whether no flavour can win any more.
    bool is_out() const;

    // The flavours whose codes the current table does not map, in the order in which they are tried.
    enum Flavour : uint8_t { kCp20932, kCp51932, kEucMs, kFlavours };

    Evidence found;              // against the table in use
    Evidence own[kFlavours];     // of the codes that the table in use does not map
    bool cut_two_byte = false;   // the input ends in a two-byte code
    bool cut_three_byte = false; // the input ends in a three-byte code

private:
    const uint8_t *scan_text(const uint8_t *p, const uint8_t *end, bool last);
    const uint8_t *take_ordinary_text(const uint8_t *p, const uint8_t *end);
    const uint8_t *take_mapped_codes(const uint8_t *p, const uint8_t *until, const uint8_t *end);
    void unmapped_two_byte(uint8_t classes);
    void unmapped_three_byte(uint8_t classes);
    void use_51932();
    void use_20932();

    JkcContext *ctx_;
    uint8_t in_use_ = kInGeneric; // the classes of the codes that the context's tables have
    KatakanaRuns<2> katakana_;
};

} // namespace jkc
