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
constexpr size_t kMostPieces = 4096 / kPiece;

struct Reading {
    int32_t cost;
    int32_t characters; // beyond ASCII
    int32_t errors;     // ill-formed sequences, but for those at the ends
    bool cut;           // an end cuts a character
    int32_t controls;
    int32_t pieces[kMostPieces]; // the cost of each
};

// Reads the text, 4096 bytes at most.
void read_as(ReadAs encoding, const uint8_t *bytes, size_t length, Reading &reading);

} // namespace jkc
