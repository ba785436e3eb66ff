#include "line_ends.h"

#include "code_types.h"
#include "jkc.h"

namespace jkc::cli {
namespace {

const char *characters_of(uint32_t line_type) {
    switch (line_type) {
    case JKC_LINE_LF:
        return "\n";
    case JKC_LINE_CR:
        return "\r";
    case JKC_LINE_CRLF:
        return "\r\n";
    default:
        return "";
    }
}

} // namespace

int find_line_ends(std::string_view text, int code_type) {
    const CodeUnits units(code_type);
    int found = 0;
    bool after_cr = false;
    for (size_t i = 0; i + units.size() <= text.size(); i += units.size()) {
        const unsigned unit = units.at(text, i);
        if (unit == '\n') {
            found |= after_cr ? JKC_LINE_CRLF : JKC_LINE_LF;
        } else if (after_cr) {
            found |= JKC_LINE_CR;
        }
        after_cr = unit == '\r';
    }
    return after_cr ? found | JKC_LINE_CR : found;
}

LineEndWriter::LineEndWriter(uint32_t line_type, int code_type)
    : units_(code_type), line_end_(encode_ascii(characters_of(line_type), code_type)) {}

std::string_view LineEndWriter::rewrite(std::string_view piece) {
    if (line_end_.empty()) {
        return piece;
    }
    waiting_ += piece;
    take(false);
    return rewritten_;
}

std::string_view LineEndWriter::finish() {
    take(true);
    return rewritten_;
}

void LineEndWriter::take(bool last) {
    const size_t size = units_.size();
    const auto unit_at = [&](size_t i) { return i + size <= waiting_.size() ? units_.at(waiting_, i) : 0; };
    rewritten_.clear();
    size_t taken = 0;
    size_t i = 0;
    for (; i + size <= waiting_.size(); i += size) {
        const unsigned unit = unit_at(i);
        if (unit != '\n' && unit != '\r') {
            continue;
        }
        if (unit == '\r' && !last && i + 2 * size > waiting_.size()) {
            break;
        }
        rewritten_.append(waiting_, taken, i - taken).append(line_end_);
        if (unit == '\r' && unit_at(i + size) == '\n') {
            i += size;
        }
        taken = i + size;
    }
    const size_t end = last ? waiting_.size() : i;
    rewritten_.append(waiting_, taken, end - taken);
    waiting_.erase(0, end);
}

} // namespace jkc::cli
