// ICU as a peer, where its headers were there when the build was configured.
#pragma once

#include <cstddef>

#if defined(JKC_BENCH_ICU)
#include <unicode/ucnv.h>
#endif

namespace jkc::bench {

#if defined(JKC_BENCH_ICU)

constexpr bool kHasIcu = true;

// Two converters, opened once and kept.
class IcuConverter {
public:
    IcuConverter(const char *from, const char *to) : from_(ucnv_open(from, &status_)), to_(ucnv_open(to, &status_)) {}
    ~IcuConverter() {
        ucnv_close(from_);
        ucnv_close(to_);
    }
    IcuConverter(const IcuConverter &) = delete;
    IcuConverter &operator=(const IcuConverter &) = delete;

    // Converts a whole text; returns the bytes that it put into `out`, 0 on failure.
    size_t convert(const char *in, size_t length, char *out, size_t room) {
        UChar *pivot_source = pivot_;
        UChar *pivot_target = pivot_;
        char *next = out;
        ucnv_convertEx(to_, from_, &next, out + room, &in, in + length, pivot_, &pivot_source, &pivot_target,
                       pivot_ + kPivotUnits, true, true, &status_);
        return U_SUCCESS(status_) ? static_cast<size_t>(next - out) : 0;
    }

private:
    static constexpr size_t kPivotUnits = 8192;

    UErrorCode status_ = U_ZERO_ERROR;
    UConverter *from_;
    UConverter *to_;
    UChar pivot_[kPivotUnits];
};

#else

constexpr bool kHasIcu = false;

class IcuConverter {
public:
    IcuConverter(const char * /*from*/, const char * /*to*/) {}
    size_t convert(const char * /*in*/, size_t /*length*/, char * /*out*/, size_t /*room*/) { return 0; }
};

#endif

} // namespace jkc::bench
