#include "suggest.h"

#include <algorithm>
#include <cctype>
#include <vector>

#include "translate.h"

namespace jkc::cli {
namespace {

// How many letters must be put in, left out, changed or swapped with the next to make b of a.
size_t distance(const std::string &a, const std::string &b) {
    std::vector<std::vector<size_t>> steps(a.size() + 1, std::vector<size_t>(b.size() + 1));
    for (size_t i = 0; i <= a.size(); ++i) {
        for (size_t j = 0; j <= b.size(); ++j) {
            if (i == 0 || j == 0) {
                steps[i][j] = i + j;
                continue;
            }
            const size_t changed = steps[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0U : 1U);
            steps[i][j] = std::min({changed, steps[i - 1][j] + 1, steps[i][j - 1] + 1});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                steps[i][j] = std::min(steps[i][j], steps[i - 2][j - 2] + 1);
            }
        }
    }
    return steps[a.size()][b.size()];
}

} // namespace

std::string plain_word(std::string_view word) {
    std::string text;
    for (const char c : word) {
        if (c != '-' && c != '_') {
            text += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        }
    }
    return text;
}

// A third of the letters may be wrong, and no long word is compared.
Suggestion::Suggestion(std::string_view unknown)
    : unknown_(plain_word(unknown.substr(0, 40))), best_distance_((unknown_.size() + 2) / 3 + 1) {}

void Suggestion::offer(std::string_view known) {
    const std::string word = plain_word(known);
    const bool is_begin = unknown_.size() > 1 && word.substr(0, unknown_.size()) == unknown_;
    const size_t found = is_begin ? 1 : distance(unknown_, word);
    if (found < best_distance_ && found < unknown_.size()) {
        best_distance_ = found;
        best_ = known;
    }
}

std::string Suggestion::text(const std::string &before) const {
    return best_.empty() ? "" : format(tr("; did you mean '%s'?"), (before + best_).c_str());
}

} // namespace jkc::cli
