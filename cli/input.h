// A file to read.
#pragma once

#include <string>
#include <string_view>

namespace jkc::cli {

class Input {
public:
    // Reads a file; "-" is standard input. Throws FileError.
    explicit Input(const std::string &name);

    const std::string &name() const { return name_; }
    std::string_view text() const { return std::string_view(bytes_).substr(kMark.size()); }
    // The text behind its byte-order mark, if it is in a code type that has one.
    std::string_view text_behind_mark(int code_type) const;

    // The text as the library shall see it: what is surely UTF-8 gets a byte-order mark, which leaves nothing to judge.
    std::string_view for_library() const { return marked_ ? std::string_view(bytes_) : text(); }
    // What the text is, when the library has judged it to be `code_type`.
    int judged(int code_type) const;

private:
    static constexpr std::string_view kMark = "\xEF\xBB\xBF";

    std::string name_;
    std::string bytes_; // a mark and the text
    bool marked_;       // the mark is meant
};

} // namespace jkc::cli
