// Cases in tests/data, so that adding one needs no code:
//
//   # comment
//   what goes wrong when this fails | options | input
//   > options | output
//   > options | output
//
// Each line with '>' is a case of its own, with the name, input and options of the line above it. Options are words or
// word=value. Bytes are hexadecimal; 8140*3 is 8140 three times over.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace jkc::testing {

class Options {
public:
    void add(const std::string &words);
    bool has(const std::string &name) const { return values_.contains(name); }
    // The value, in any base; `otherwise` without the option.
    int64_t number(const std::string &name, int64_t otherwise = 0) const;
    std::string text(const std::string &name, const std::string &otherwise = "") const;

private:
    std::map<std::string, std::string> values_;
};

struct Case {
    std::string name;
    Options options;
    std::string input;
    std::string output; // as written
};

// Fails the running test when the file is missing, empty or malformed.
std::vector<Case> read_cases(const std::string &file);

// One string for each word, as often as it is repeated.
std::vector<std::string> parse_pieces(const std::string &hex);
std::string parse_bytes(const std::string &hex);

// For messages: hexadecimal, only the end of a long text.
std::string show_bytes(const std::string &bytes);

} // namespace jkc::testing
