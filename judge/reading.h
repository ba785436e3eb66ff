// A text read as if it were in one encoding, and what that costs: see language.h.
#pragma once

#include <cstddef>
#include <cstdint>

namespace jkc {

enum class ReadAs : uint8_t {
    kSjis,
    kEuc,
    kUtf8,
    kUtf16Be,
    kUtf16Le,
    kLatin,      // a byte a letter, as in the encodings of Western Europe
    kSingleByte, // a byte a letter of another script
    kDoubleByte, // two bytes a character of another language
};
constexpr int kReadings = 8;
constexpr int kByteReadings = 3; // the first ones, which hold ASCII text as it is

// Texts are compared piece by piece too, of this many bytes.
constexpr size_t kPiece = 32;
// More than this is not read: prose is told by a tenth of it.
constexpr size_t kLongestReading = 512;

struct Reading {
    int32_t cost;
    int32_t characters; // beyond ASCII
    int32_t errors;     // ill-formed sequences, but for those at the ends
    int32_t controls;
    bool cut;                                 // an end cuts a character
    int32_t pieces[kLongestReading / kPiece]; // the cost of each
};

// Reads the text, kLongestReading bytes at most.
void read_as(ReadAs encoding, const uint8_t *bytes, size_t length, Reading &reading);

} // namespace jkc
