// Cases in tests/data, so that adding one needs no code:
//
//   # comment
//   what goes wrong when this fails | options | input
//   > options | output
//   > options | output
//
// Each line with '>' is a case of its own, with the name, input and options of the line above it. Options are words or
// word=value. Bytes are hexadecimal; 8140*3 is 8140 three times over. Digests and long lists of answers are made anew by
// a run of the tests with JKC_UPDATE=1 in the environment: see check_results().
#pragma once

#include <cstdint>
#include <functional>
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
    size_t line = 0;    // number of its line, from 0
};

Case make_case(const std::string &options, const std::string &input);

// Fails the running test when the file is missing, empty or malformed.
std::vector<Case> read_cases(const std::string &file);

// Compares the output of each case, as written, with what `result` answers for it. With JKC_UPDATE in the environment
// it writes the file anew with these answers instead, for a person to read the difference.
void check_results(const std::string &file, const std::function<std::string(const Case &)> &result);

// Words with a space between them, those that repeat the one before as word*count.
std::string in_words(const std::vector<std::string> &words);

// One string for each word, as often as it is repeated.
std::vector<std::string> parse_pieces(const std::string &hex);
std::string parse_bytes(const std::string &hex);
std::string joined(const std::vector<std::string> &pieces);

// For messages: hexadecimal, only the end of a long text.
std::string show_bytes(const std::string &bytes);

} // namespace jkc::testing
