// Texts to measure with.
#pragma once

#include <cstddef>
#include <string>

namespace jkc::bench {

// Japanese prose, HTML with one Japanese character in twenty, plain English.
enum class Text { kProse, kMarkup, kAscii };

// Lines of the text, shuffled and repeated, in the encoding that iconv calls `encoding`: at least
// `size` bytes, ending with a line. The same for the same arguments.
std::string make_text(Text text, const char *encoding, size_t size);

// Converts with iconv; ends the program when the text does not go through without loss.
std::string convert_with_iconv(const char *from, const char *to, const std::string &text);

} // namespace jkc::bench
