// "Did you mean X?"
#pragma once

#include <string>
#include <string_view>

namespace jkc::cli {

// What of a word counts when words are compared: case, '-' and '_' do not.
std::string plain_word(std::string_view word);

// Looks for the known word that an unknown one was meant to be.
class Suggestion {
public:
    explicit Suggestion(std::string_view unknown);

    void offer(std::string_view known);
    // "; did you mean 'X'?", or nothing where no word is near. `before` stands before X.
    std::string text(const std::string &before = "") const;

private:
    std::string unknown_;
    std::string best_;
    size_t best_distance_; // a word must be nearer
};

} // namespace jkc::cli
