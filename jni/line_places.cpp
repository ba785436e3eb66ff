#include "jni/line_places.h"

#include <cstring>

#include "core/code_types.h"

namespace jkc {

namespace {

struct Bytes8 {
    static constexpr size_t kWidth = 1;
    static uint32_t unit(const uint8_t *p) { return *p; }
};
struct Units16Be {
    static constexpr size_t kWidth = 2;
    static uint32_t unit(const uint8_t *p) { return static_cast<uint32_t>(p[0] << 8 | p[1]); }
};
struct Units16Le {
    static constexpr size_t kWidth = 2;
    static uint32_t unit(const uint8_t *p) { return static_cast<uint32_t>(p[1] << 8 | p[0]); }
};

// Counts the line ends; `behind` receives the place behind the last one, if there is any.
template <class Units>
int64_t count_line_ends(const uint8_t *p, const uint8_t *end, bool &behind_cr, const uint8_t *&behind) {
    constexpr size_t kWidth = Units::kWidth;
    end -= static_cast<size_t>(end - p) % kWidth;
    const auto is_line_end = [](uint32_t unit) { return unit == '\n' || unit == '\r'; };
    const uint8_t *last = end;
    while (last != p && !is_line_end(Units::unit(last - kWidth))) {
        last -= kWidth;
    }
    int64_t lines = 0;
    bool after_cr = behind_cr;
    for (const uint8_t *q = p; q != last; q += kWidth) {
        const uint32_t unit = Units::unit(q);
        lines += unit == '\r' || (unit == '\n' && !after_cr) ? 1 : 0;
        after_cr = unit == '\r';
    }
    behind = last != p ? last : behind;
    behind_cr = last == end && after_cr;
    return lines;
}

bool is_low_surrogate_at(const uint8_t *p) {
    uint16_t unit;
    memcpy(&unit, p, sizeof unit);
    return is_low_surrogate(unit);
}

} // namespace

void LinePlaces::init(int32_t code_type) {
    code_type_ = code_type;
    counter_.init(code_type, native_utf16());
    reset();
}

void LinePlaces::reset() {
    counter_.reset();
    at_begin_ = true;
    passed_ = 0;
    line_ = 1;
    characters_ = 0;
    behind_cr_ = false;
    cut_length_ = 0;
    held_length_ = 0;
    length_ = 0;
}

void LinePlaces::next(const uint8_t *data, size_t length) {
    data_ = data;
    length_ = length;
}

Place LinePlaces::at(uint64_t offset) {
    pass_bom();
    pass(offset - passed_);
    if (cut_length_ > 0) { // what is lost begins inside what else would be a character
        cut_length_ = 0;
        ++characters_;
    }
    return {line_, characters_ + 1};
}

void LinePlaces::pass_piece() {
    const size_t all = held_length_ + length_;
    if (all > kReach) {
        pass_bom();
        const size_t rest = held_length_ + length_;
        pass((rest > kReach ? rest - kReach : 0) & ~size_t{1}); // whole units of UTF-16
    }
    const size_t room = kReach + 1 - held_length_;
    const size_t kept = length_ < room ? length_ : room;
    memcpy(held_ + held_length_, data_, kept);
    held_length_ += kept;
    length_ = 0;
}

// Offsets count from behind it. There is enough of the text to see it.
void LinePlaces::pass_bom() {
    if (!at_begin_) {
        return;
    }
    at_begin_ = false;
    const Bom bom = bom_of(family_of(code_type_));
    for (size_t i = 0; i < bom.length; ++i) {
        const size_t in_data = i - held_length_; // wraps for what is held
        if (i < held_length_ ? held_[i] != bom.bytes[i] : in_data >= length_ || data_[in_data] != bom.bytes[i]) {
            return;
        }
    }
    const size_t of_held = held_length_ < bom.length ? held_length_ : bom.length;
    held_length_ -= of_held;
    memmove(held_, held_ + of_held, held_length_);
    data_ += bom.length - of_held;
    length_ -= bom.length - of_held;
}

void LinePlaces::pass(uint64_t length) {
    const size_t of_held = length < held_length_ ? static_cast<size_t>(length) : held_length_;
    const size_t of_data = static_cast<size_t>(length) - of_held;
    // A code unit may lie in both.
    const size_t split = is_utf16(family_of(code_type_)) && of_data > 0 ? of_held % 2 : 0;
    take(held_, held_ + of_held - split);
    if (split > 0) {
        const uint8_t unit[] = {held_[of_held - 1], data_[0]};
        take(unit, unit + sizeof unit);
    }
    held_length_ -= of_held;
    memmove(held_, held_ + of_held, held_length_);
    take(data_ + split, data_ + of_data);
    data_ += of_data;
    length_ -= of_data;
    passed_ += length;
}

void LinePlaces::take(const uint8_t *p, const uint8_t *end) {
    if (p == end) {
        return;
    }
    const uint8_t *behind = nullptr;
    const Family family = family_of(code_type_);
    line_ += family == Family::kUtf16Be   ? count_line_ends<Units16Be>(p, end, behind_cr_, behind)
             : family == Family::kUtf16Le ? count_line_ends<Units16Le>(p, end, behind_cr_, behind)
                                          : count_line_ends<Bytes8>(p, end, behind_cr_, behind);
    if (behind != nullptr) {
        counter_.reset();
        characters_ = 0;
        cut_length_ = 0;
        p = behind;
    }
    count(p, end);
}

// Counts characters. The beginning of one that follows is kept.
void LinePlaces::count(const uint8_t *p, const uint8_t *end) {
    while (cut_length_ > 0 && p != end) {
        cut_[cut_length_++] = *p++;
        const size_t taken = count_whole(cut_, cut_ + cut_length_);
        cut_length_ -= taken;
        memmove(cut_, cut_ + taken, cut_length_);
    }
    p += count_whole(p, end);
    if (p != end) {
        cut_length_ = static_cast<size_t>(end - p);
        memcpy(cut_, p, cut_length_);
    }
}

// Returns how many bytes were taken: all but at most three.
size_t LinePlaces::count_whole(const uint8_t *p, const uint8_t *end) {
    const uint8_t *const begin = p;
    uint8_t units[1024];
    for (;;) {
        uint8_t *o = units;
        const Codec::Result result = counter_.run(p, end, o, units + sizeof units);
        for (const uint8_t *unit = units; unit != o; unit += 2) {
            characters_ += is_low_surrogate_at(unit) ? 0 : 1;
        }
        if (result == Codec::kUnderflow) {
            return static_cast<size_t>(p - begin);
        }
        if (result != Codec::kOverflow) {
            p += counter_.loss_length();
            ++characters_;
        }
    }
}

} // namespace jkc
