// The scanner for EUC-JP and its variants. Judgement feeds it the blocks of non-ASCII input.
#pragma once

#include "core/internal.h"
#include "judge/scan/evidence.h"
#include "judge/scan/katakana_runs.h"
#include "tables/euc_classes.h"

namespace jkc {

class EucScanner {
public:
    explicit EucScanner(JkcContext *ctx) : ctx_(ctx) {}

    // Takes the bytes from p to end. Returns where it stopped: at `end`, or at a character that `end` cuts.
    const uint8_t *scan(const uint8_t *p, const uint8_t *end, bool last);

    // As scan(), but counts nothing: only the table selection becomes what scan() would make it. For input of which
    // EUC-JP is_eliminated().
    const uint8_t *watch(const uint8_t *p, const uint8_t *end);

    // As scan(), but of all counts only the differences between the variants become what scan() would make them.
    const uint8_t *compare(const uint8_t *p, const uint8_t *end, bool last);

    // Whether no variant can win any more.
    bool is_eliminated() const;

    // The variants in the order in which they are tried.
    enum Variant : uint8_t { kCp20932, kCp51932, kEucMs, kVariants };

    Origin origin;
    Evidence found;          // by the table in use
    Evidence own[kVariants]; // of the codes that the table in use does not map

private:
    const uint8_t *scan_text(const uint8_t *p, const uint8_t *end, bool last);
    const uint8_t *take_ordinary_text(const uint8_t *p, const uint8_t *end);
    const uint8_t *take_mapped_codes(const uint8_t *p, const uint8_t *until, const uint8_t *end);
    void unmapped_two_byte(const uint8_t *p, uint8_t classes);
    void unmapped_three_byte(const uint8_t *p, uint8_t classes);
    void cut(const uint8_t *p);
    void count(Variant variant, bool mapped, int length, const uint8_t *p);
    void use_51932();
    void use_20932();

    JkcContext *ctx_;
    uint8_t in_use_ = kInGeneric; // the EucClass bits of the context's tables
    KatakanaRuns<2> katakana_;
};

} // namespace jkc
