// Mends mojibake: looks for the misreadings that, undone, make the likeliest text, and undoes them.
#include <algorithm>
#include <cstring>

#include "core/code_types.h"
#include "judge/language.h"
#include "judge/scan/utf8_validity.h"
#include "mend/sample.h"
#include "mend/text_cost.h"
#include "mend/undo.h"
#include "mend/ways.h"

namespace jkc {

namespace {

// How much rarer a text is that was misread once more.
constexpr int64_t kMisreadingCost = 16 * kBit;

// How much likelier the mended text must be: by so much, and by so many quarters of the cost.
constexpr int64_t kClearGain = 24 * kBit;
constexpr int64_t kQuarters = 3;

// Japanese text costs less for a character, and so much more for a short text. What chance makes of other bytes costs
// more.
constexpr int64_t kJapaneseCost = 21 * kBit / 2;
constexpr int64_t kShortTextCost = 16 * kBit;

struct Proposal {
    int32_t count = 0;
    JkcMisreading steps[JKC_MISREADINGS] = {};
    int64_t cost = 0;
};

bool is_japanese(const TextCost &mended) {
    return mended.japanese * 3 >= mended.characters &&
           mended.as_mended <= mended.characters * kJapaneseCost + kShortTextCost;
}

// UTF-8 in single bytes is told by its form, in any language.
bool is_likely(const TextCost &mended, JkcMisreading misreading) {
    return (misreading.was == JKC_TYPE_UTF8 && misreading.read_as >= JKC_READ_CP1252) || is_japanese(mended);
}

bool is_clear(const TextCost &found, const TextCost &mended, int64_t damage) {
    const int64_t cost = mended.as_mended + damage;
    return found.as_it_is - cost >= kClearGain && cost * 4 <= found.as_it_is * kQuarters;
}

class Search {
public:
    explicit Search(std::span<const uint8_t> sample) { explore(0, sample, text_cost(sample).as_mended, 0); }

    Proposal best;

private:
    void explore(int32_t depth, std::span<const uint8_t> text, int64_t cost, int64_t damage_before) {
        if (depth == 0) {
            best.cost = cost;
        }
        for (const JkcMisreading &way : ways_back()) {
            if (tries_left_-- <= 0) {
                return;
            }
            uint8_t room[2 * kMendSample]; // what takes more is no text that was misread
            TextBuffer undone(room, sizeof room);
            int64_t damage = damage_before + kMisreadingCost;
            if (undo(way, text, undone, damage) != Undone::kAll) {
                continue;
            }
            const TextCost outcome = text_cost({undone.begin(), undone.size()});
            const int64_t cost_undone = outcome.as_mended + damage;
            if (cost_undone >= cost) {
                continue;
            }
            steps_[depth] = way;
            if (cost_undone < best.cost) {
                best.cost = cost_undone;
                best.count = depth + 1;
                std::copy(steps_, steps_ + best.count, best.steps);
                best_is_japanese_ = is_japanese(outcome);
            } else if (best_is_japanese_) { // where this leads is of no interest any more
                continue;
            }
            if (depth + 1 < JKC_MISREADINGS) {
                explore(depth + 1, {undone.begin(), undone.size()}, cost_undone, damage);
            }
        }
    }

    JkcMisreading steps_[JKC_MISREADINGS] = {};
    int32_t tries_left_ = 256;
    bool best_is_japanese_ = false;
};

int32_t confidence_by(int64_t gain, uint64_t lost) {
    constexpr int32_t kLoss = 15;
    const auto bits = static_cast<int32_t>(std::min<int64_t>(gain / kBit, 99));
    return std::min(99, 50 + bits) - (lost > 0 ? kLoss : 0);
}

// Undoes the steps one after the other.
Undone undo_all(const Proposal &proposal, std::span<const uint8_t> text, TextBuffer &mended, int64_t &damage) {
    TextBuffer between;
    std::span<const uint8_t> from = text;
    for (int32_t i = 0; i < proposal.count; ++i) {
        TextBuffer &to = (proposal.count - i) % 2 != 0 ? mended : between;
        to.clear();
        if (!to.grow(from.size() + 64)) {
            return Undone::kFull;
        }
        if (const Undone answer = undo(proposal.steps[i], from, to, damage); answer != Undone::kAll) {
            return answer;
        }
        from = {to.begin(), to.size()};
    }
    return Undone::kAll;
}

int32_t mend(std::span<const uint8_t> text, TextBuffer &mended, JkcMending &mending) {
    uint8_t room[kMendSample];
    bool whole = false;
    const std::span<const uint8_t> sample = sample_of(text, room, whole);
    if (sample.empty()) {
        return JKC_SUCCESS;
    }
    const Proposal proposal = Search(sample).best;
    if (proposal.count == 0) {
        return JKC_SUCCESS;
    }
    int64_t damage = proposal.count * kMisreadingCost;
    switch (undo_all(proposal, text, mended, damage)) {
    case Undone::kFull:
        return JKC_EALLOC;
    case Undone::kNoWay:
        return JKC_SUCCESS;
    case Undone::kAll:
        break;
    }
    const TextCost found = text_cost(text);
    const TextCost outcome = text_cost({mended.begin(), mended.size()});
    if (!is_clear(found, outcome, damage) || !is_likely(outcome, proposal.steps[proposal.count - 1])) {
        return JKC_SUCCESS;
    }
    mending.count = proposal.count;
    mending.lost = mended.replacements();
    mending.confidence = confidence_by(found.as_it_is - outcome.as_mended - damage, mending.lost);
    std::copy(proposal.steps, proposal.steps + proposal.count, mending.steps);
    return JKC_SUCCESS;
}

bool is_utf8(std::span<const uint8_t> text) {
    Utf8Validity validity;
    validity.take(text.data(), text.data() + text.size(), true, 0);
    return validity.first_error < 0;
}

std::span<const uint8_t> behind_bom(std::span<const uint8_t> text) {
    const Bom bom = bom_of(Family::kUtf8);
    const bool begins = text.size() >= bom.length && memcmp(text.data(), bom.bytes, bom.length) == 0;
    return begins ? text.subspan(bom.length) : text;
}

} // namespace

} // namespace jkc

int32_t jkc_unmojibake(const uint8_t *text, size_t length, uint8_t **mended, size_t *mended_length,
                       JkcMending *mending) {
    using namespace jkc;
    *mended = nullptr;
    *mended_length = 0;
    JkcMending told = {};
    TextBuffer buffer;
    int32_t status = JKC_SUCCESS;
    if (length > 0) {
        const std::span<const uint8_t> given(text, length);
        status = is_utf8(given) ? mend(behind_bom(given), buffer, told) : static_cast<int32_t>(JKC_ECHAR);
    }
    if (status == JKC_SUCCESS && told.count > 0) {
        *mended_length = buffer.size();
        *mended = buffer.release();
    }
    if (mending != nullptr) {
        told.size = mending->size;
        memcpy(mending, &told, std::min(told.size, sizeof told));
    }
    return status;
}
