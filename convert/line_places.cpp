#include "convert/line_places.h"

#include <algorithm>
#include <cstring>

#include "core/code_types.h"
#include "core/wide_units.h"

namespace jkc {

namespace {

// How the code units of a text are looked at, several at once.
struct ByteUnits {
    using Wide = Bytes16;
    static constexpr size_t kWidth = 1;
    static uint32_t unit(const uint8_t *p) { return *p; }
    static Wide load(const uint8_t *p) { return load16(p); }
    static Wide equal(Wide units, uint8_t unit) { return equals(units, unit); }
};
template <class Order>
struct WideUnits {
    using Wide = Units8;
    static constexpr size_t kWidth = 2;
    static uint32_t unit(const uint8_t *p) { return Order::unit(p); }
    static Wide load(const uint8_t *p) { return load8<Order>(p); }
    static Wide equal(Wide units, uint8_t unit) { return units_equal(units, unit); }
};

constexpr size_t kMostAdded = UINT8_MAX; // to one place of a sum, without a carry

bool is_line_end(uint32_t unit) { return unit == '\n' || unit == '\r'; }

// p where there is none.
template <class Units>
const uint8_t *behind_last_line_end(const uint8_t *p, const uint8_t *end) {
    while (static_cast<size_t>(end - p) >= kWide) {
        const auto units = Units::load(end - kWide);
        if (any(reinterpret_cast<Bytes16>(Units::equal(units, '\n') | Units::equal(units, '\r')))) {
            break;
        }
        end -= kWide;
    }
    while (end != p && !is_line_end(Units::unit(end - Units::kWidth))) {
        end -= Units::kWidth;
    }
    return end;
}

template <class Units>
uint64_t count_line_ends(const uint8_t *p, const uint8_t *end, bool behind_cr) {
    constexpr size_t kWidth = Units::kWidth;
    uint64_t lines = 0;
    const auto count_one = [&] {
        const uint32_t unit = Units::unit(p);
        lines += unit == '\r' || (unit == '\n' && !behind_cr) ? 1 : 0;
        behind_cr = unit == '\r';
        p += kWidth;
    };
    if (p != end) {
        count_one(); // so that there is a unit in front of all that follow
    }
    while (static_cast<size_t>(end - p) >= kWide) {
        typename Units::Wide sums = {};
        const size_t most = std::min(static_cast<size_t>(end - p) / kWide, kMostAdded);
        for (size_t i = 0; i < most; ++i, p += kWide) {
            const auto units = Units::load(p);
            const auto in_pair = Units::equal(Units::load(p - kWidth), '\r');
            sums -= Units::equal(units, '\r') | (Units::equal(units, '\n') & ~in_pair);
        }
        for (size_t i = 0; i < kWide / kWidth; ++i) {
            lines += sums[i];
        }
        behind_cr = Units::unit(p - kWidth) == '\r';
    }
    while (p != end) {
        count_one();
    }
    return lines;
}

// Counts the line ends, and moves p behind the last one.
template <class Units>
uint64_t pass_lines(const uint8_t *&p, const uint8_t *end, bool &behind_cr) {
    end -= static_cast<size_t>(end - p) % Units::kWidth;
    const uint8_t *const begin = p;
    p = behind_last_line_end<Units>(p, end);
    const uint64_t lines = count_line_ends<Units>(begin, p, behind_cr);
    behind_cr = p == end && p != begin && Units::unit(p - Units::kWidth) == '\r';
    return lines;
}

// A mark in front of a line is a character of it.
int32_t without_bom(int32_t code_type) {
    switch (family_of(code_type)) {
    case Family::kUtf16Be:
        return JKC_TYPE_UTF16BE;
    case Family::kUtf16Le:
        return JKC_TYPE_UTF16LE;
    case Family::kUtf8:
        return JKC_TYPE_UTF8;
    default:
        return code_type;
    }
}

// A piece of UTF-16 as this machine has it, and well-formed.
constexpr size_t kPiece = 8000;
uint64_t count_characters(const uint8_t *p, const uint8_t *end) {
    auto count = static_cast<uint64_t>(end - p) / 2;
    static_assert(kPiece / kWide <= UINT16_MAX, "the sums overflow");
    Units8 low = {};
    for (; static_cast<size_t>(end - p) >= kWide; p += kWide) {
        low -= units_equal_masked<0xFC00>(reinterpret_cast<Units8>(load16(p)), 0xDC00);
    }
    for (size_t i = 0; i < kUnits; ++i) {
        count -= low[i];
    }
    for (; p != end; p += 2) {
        uint16_t unit;
        memcpy(&unit, p, sizeof unit);
        count -= is_low_surrogate(unit) ? 1 : 0;
    }
    return count;
}

} // namespace

void LinePlaces::init(int32_t code_type) {
    family_ = family_of(code_type);
    counter_.init(without_bom(code_type), native_utf16());
    start(0);
}

void LinePlaces::start(uint64_t offset) {
    counter_.reset();
    passed_ = offset;
    line_ = 1;
    characters_ = 0;
    behind_cr_ = false;
    cut_length_ = 0;
}

void LinePlaces::pass(const uint8_t *p, uint64_t offset) {
    if (offset > passed_) {
        take(p - (offset - passed_), p);
        passed_ = offset;
    }
}

Place LinePlaces::at(const uint8_t *p, uint64_t offset) {
    pass(p, offset);
    if (cut_length_ > 0) { // what is lost begins inside what else would be a character
        cut_length_ = 0;
        ++characters_;
    }
    return {line_, characters_ + 1};
}

void LinePlaces::take(const uint8_t *p, const uint8_t *end) {
    const uint8_t *const begin = p;
    line_ += family_ == Family::kUtf16Be   ? pass_lines<WideUnits<BigEndian>>(p, end, behind_cr_)
             : family_ == Family::kUtf16Le ? pass_lines<WideUnits<LittleEndian>>(p, end, behind_cr_)
                                           : pass_lines<ByteUnits>(p, end, behind_cr_);
    if (p != begin) {
        counter_.reset();
        characters_ = 0;
        cut_length_ = 0;
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
    uint8_t units[kPiece];
    for (;;) {
        uint8_t *o = units;
        const Codec::Result result = counter_.run(p, end, o, units + sizeof units);
        characters_ += count_characters(units, o);
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
