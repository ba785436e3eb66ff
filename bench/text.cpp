#include "text.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <vector>

#include <iconv.h>

namespace jkc::bench {
namespace {

std::vector<std::string> read_lines(const char *name) {
    std::ifstream file(std::string(JKC_BENCH_TEXT_DIR "/") + name);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
        lines.push_back(line + "\n");
    }
    if (lines.empty()) {
        std::fprintf(stderr, "cannot read %s/%s\n", JKC_BENCH_TEXT_DIR, name);
        std::exit(1);
    }
    return lines;
}

const char *file_name(Text text) {
    switch (text) {
    case Text::kProse:
        return "prose.txt";
    case Text::kMarkup:
        return "markup.html";
    case Text::kAscii:
        return "ascii.txt";
    }
    return "";
}

} // namespace

std::string convert_with_iconv(const char *from, const char *to, const std::string &text) {
    iconv_t converter = iconv_open(to, from);
    std::string out(text.size() * 4 + 16, '\0');
    std::string in = text; // iconv wants its input writable
    char *next_in = in.data();
    char *next_out = out.data();
    size_t left_in = in.size();
    size_t left_out = out.size();
    constexpr auto kFailed = static_cast<size_t>(-1);
    if (converter == reinterpret_cast<iconv_t>(-1) ||
        iconv(converter, &next_in, &left_in, &next_out, &left_out) == kFailed ||
        iconv(converter, nullptr, nullptr, &next_out, &left_out) == kFailed) {
        std::perror(to);
        std::exit(1);
    }
    iconv_close(converter);
    out.resize(out.size() - left_out);
    return out;
}

std::string make_text(Text text, const char *encoding, size_t size) {
    std::vector<std::string> lines = read_lines(file_name(text));
    for (std::string &line : lines) {
        line = convert_with_iconv("UTF-8", encoding, line);
    }
    std::string out;
    out.reserve(size + 1000); // grown by doubling, it would leave a higher peak of memory than peak_memory can see over
    uint32_t random = 1;
    while (out.size() < size) {
        random = random * 1664525 + 1013904223;
        out += lines[(random >> 8) % lines.size()];
    }
    return out;
}

} // namespace jkc::bench
