#include "jni/fed_text.h"

#include <algorithm>
#include <cstdlib>

namespace jkc {

namespace {

constexpr size_t kFirstRoom = 16;

} // namespace

int32_t FedText::init(int32_t from, int32_t to, const JkcConverterOptions &options, size_t keep) {
    JkcConverterOptions with_observer = options;
    with_observer.observer = keep_loss;
    with_observer.observer_data = this;
    const int32_t status = jkc_converter_create(&converter_, from, to, &with_observer);
    if (status == JKC_SUCCESS) {
        most_ = keep;
        places_.init(from == JKC_TYPE_ASCII ? static_cast<int32_t>(JKC_TYPE_SJIS) : from);
    }
    return status;
}

void FedText::destroy() {
    jkc_converter_release(converter_);
    free(kept_);
}

void FedText::reset() {
    jkc_converter_reset(converter_);
    places_.reset();
    kept_count_ = 0;
}

int32_t FedText::keep_loss(const JkcLoss *loss, void *user_data) {
    static_cast<FedText *>(user_data)->keep(*loss);
    return JKC_SUCCESS;
}

// One that there is no memory for is counted only.
void FedText::keep(const JkcLoss &loss) {
    if (kept_count_ == most_) {
        return;
    }
    if (kept_count_ == kept_room_) {
        const size_t room = std::min(most_, std::max(kFirstRoom, 2 * kept_room_));
        auto *grown = static_cast<KeptLoss *>(realloc(kept_, room * sizeof(KeptLoss)));
        if (grown == nullptr) {
            most_ = kept_count_;
            return;
        }
        kept_ = grown;
        kept_room_ = room;
    }
    kept_[kept_count_++] = {loss, {0, 0}};
}

int32_t FedText::run(const uint8_t *&in, size_t in_length, uint8_t *&out, size_t out_length, bool last) {
    const uint8_t *const begin = in;
    const size_t kept_before = kept_count_;
    const int32_t status = jkc_converter_run(converter_, &in, &in_length, &out, &out_length, last);
    status_ = status;
    if (kept_before == most_) {
        return status; // nobody asks for places any more
    }
    places_.next(begin, static_cast<size_t>(in - begin));
    for (size_t i = kept_before; i < kept_count_; ++i) {
        kept_[i].place = places_.at(kept_[i].loss.offset);
    }
    if (!last || status == JKC_STOP_OUTPUT) {
        places_.pass_piece();
    }
    return status;
}

JkcConverterLosses FedText::losses() const {
    JkcConverterLosses losses = {};
    losses.size = sizeof losses;
    jkc_converter_losses(converter_, &losses);
    return losses;
}

} // namespace jkc
