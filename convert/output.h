// The pending output.
#pragma once

#include <cstddef>
#include <cstdint>

namespace jkc {

class Output {
public:
    // Output is to be handed over as soon as more than `flush_above` bytes are pending in the area.
    Output(uint8_t *area, size_t flush_above) : area_(area), flush_above_(flush_above) {}

    uint8_t *begin() const { return area_; }
    size_t pending(const uint8_t *o) const { return static_cast<size_t>(o - area_); }
    bool full(const uint8_t *o) const { return pending(o) > flush_above_; }
    // Whether so many bytes can be written before it is full.
    bool has_room(const uint8_t *o, size_t length) const { return pending(o) + length <= flush_above_; }

    // Steps of at most `longest` bytes that can each begin without being full.
    size_t safe_steps(const uint8_t *o, size_t longest) const {
        return full(o) ? 0 : (flush_above_ - pending(o)) / longest + 1;
    }

private:
    uint8_t *area_;
    size_t flush_above_;
};

} // namespace jkc
