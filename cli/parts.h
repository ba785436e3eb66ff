// The parts of a text, each in one encoding.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "source.h"

namespace jkc::cli {

struct Part {
    int type; // a JkcCodeType or a JkcDecision
    uint64_t first_line;
    uint64_t last_line;
    uint64_t begin; // offsets in the source
    uint64_t end;
};

// Goes through the lines of a text in a byte encoding, each with its line end. A line that is very long comes in pieces.
void for_each_line(const Source &source, const std::function<void(std::string_view line)> &take);

// Parts of whole lines, as few as these allow. Lines of ASCII go with their neighbours.
std::vector<Part> find_parts(const Source &source);

// "line 5" or "lines 5 to 9"
std::string describe_lines(const Part &part);

// "UTF8 up to line 50, SJIS from line 51"; of many parts, the first ones.
std::string describe_parts(const std::vector<Part> &parts);

} // namespace jkc::cli
