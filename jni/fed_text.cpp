#include "jni/fed_text.h"

#include <algorithm>
#include <cstdlib>

namespace jkc {

namespace {

constexpr size_t kFirstRoom = 16;

} // namespace

int32_t FedText::init(int32_t from, int32_t to, const JkcConverterOptions &options, size_t keep) {
    JkcConverterOptions with_observer = options;
    with_observer.places = keep > 0;
    with_observer.observer = keep_loss;
    with_observer.observer_data = this;
    const int32_t status = jkc_converter_create(&converter_, from, to, &with_observer);
    if (status == JKC_SUCCESS) {
        most_ = keep;
    }
    return status;
}

void FedText::destroy() {
    jkc_converter_release(converter_);
    free(kept_);
}

void FedText::reset() {
    jkc_converter_reset(converter_);
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
        auto *grown = static_cast<JkcLoss *>(realloc(kept_, room * sizeof(JkcLoss)));
        if (grown == nullptr) {
            most_ = kept_count_;
            return;
        }
        kept_ = grown;
        kept_room_ = room;
    }
    kept_[kept_count_++] = loss;
}

int32_t FedText::run(const uint8_t *&in, size_t in_length, uint8_t *&out, size_t out_length, bool last) {
    status_ = jkc_converter_run(converter_, &in, &in_length, &out, &out_length, last);
    return status_;
}

JkcConverterLosses FedText::losses() const {
    JkcConverterLosses losses = {};
    losses.size = sizeof losses;
    jkc_converter_losses(converter_, &losses);
    return losses;
}

} // namespace jkc
