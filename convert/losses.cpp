#include "convert/losses.h"

#include <algorithm>
#include <cstring>

#include "convert/line_places.h"

namespace jkc {

void Losses::init(const JkcConverterOptions &options, LinePlaces *places) {
    policy_ = static_cast<JkcLossPolicy>(options.on_loss);
    geta_ = options.geta != 0;
    one_code_each_ = options.one_code_each != 0;
    observer_ = options.observer;
    observer_data_ = options.observer_data;
    places_ = places;
    reset();
}

void Losses::reset() {
    known_until = 0;
    ends_with = JKC_SUCCESS;
    std::fill_n(counts_, JKC_LOSS_TRUNCATED + 1, uint64_t{0});
    last_ = {sizeof(JkcLoss), 0, 0, 0, 0, -1, 0, 0};
    first_ = last_;
}

int32_t Losses::add(JkcLossKind kind, int64_t offset, const uint8_t *p, uint32_t length, int64_t code_point) {
    last_ = {sizeof(JkcLoss), static_cast<uint64_t>(offset), length, kind, 0, code_point, 0, 0};
    for (uint32_t i = 0; i < std::min(length, 4U); ++i) {
        last_.code = last_.code << 8 | p[i];
    }
    if (places_ != nullptr) {
        const Place place = places_->at(p, last_.offset);
        last_.line = place.line;
        last_.column = place.column;
    }
    if (first_.kind == 0) {
        first_ = last_;
    }
    ++counts_[kind];
    const int32_t answer = observer_ != nullptr ? observer_(&last_, observer_data_) : 0;
    const bool means_stop = answer == JKC_STOP_INPUT || answer == JKC_STOP_OUTPUT;
    return means_stop || (answer == 0 && policy_ == JKC_ON_LOSS_STOP) ? static_cast<int32_t>(JKC_ELOSS) : answer;
}

void Losses::tell(JkcConverterLosses &told) const {
    told.ill_formed = counts_[JKC_LOSS_ILL_FORMED];
    told.unmappable = counts_[JKC_LOSS_UNMAPPABLE];
    told.truncated = counts_[JKC_LOSS_TRUNCATED];
    told.first = first_;
    told.last = last_;
}

CharacterEscape escape_character(uint32_t c) {
    CharacterEscape escape = {{'&', '#', 'x'}, 3};
    uint32_t digits = 1;
    while (digits < 6 && c >> (4 * digits) != 0) {
        ++digits;
    }
    while (digits > 0) {
        --digits;
        escape.bytes[escape.length++] = static_cast<uint8_t>("0123456789ABCDEF"[c >> (4 * digits) & 0xF]);
    }
    escape.bytes[escape.length++] = ';';
    return escape;
}

} // namespace jkc
