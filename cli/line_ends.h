// Line ends, found and rewritten in any code type. The program does both itself: the library looks for them byte by
// byte in UTF-16 with a byte-order mark, and in a copy within one encoding it writes two for a CR LF that lies between
// two blocks of its input.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "code_units.h"

namespace jkc::cli {

// The kinds that a text has, as JkcLineType bits.
int find_line_ends(std::string_view text, int code_type);

// Rewrites the line ends of a text that comes in pieces.
class LineEndWriter {
public:
    LineEndWriter(uint32_t line_type, int code_type);

    // The rewritten piece, valid until the next call. A CR at its end waits for what follows.
    std::string_view rewrite(std::string_view piece);
    // What still waits when all pieces are there.
    std::string_view finish();

private:
    void take(bool last);

    CodeUnits units_;
    std::string line_end_; // in the code type; empty: line ends stay as they are
    std::string waiting_;
    std::string rewritten_;
};

} // namespace jkc::cli
