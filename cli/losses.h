// What a conversion loses, told to people and programs.
#pragma once

#include <functional>
#include <string>

#include "jkc/converter.h"
#include "parts.h"
#include "told_conversion.h"

namespace jkc::cli {

// A loss with its bytes.
struct PlacedLoss {
    JkcLoss loss;      // its offset and its line count from the begin of the file
    std::string bytes; // of the source
};

// Goes through a part again and tells each loss in its order, until `take` answers false.
void for_each_loss(const Source &source, const Part &part, const Route &route,
                   const std::function<bool(const PlacedLoss &)> &take);

// "ill-formed bytes 82 0A" or "U+2603 (☃)"
std::string describe(const PlacedLoss &loss);

// "line 2, column 5"
std::string describe_place(const JkcLoss &loss);

std::string in_hex(const std::string &bytes);

// Of a character that is not ASCII.
std::string utf8_of(int64_t code_point);

} // namespace jkc::cli
