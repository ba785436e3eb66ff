// What a shell can put in place of a word that is being typed. Its scripts, in completion/, ask for it with
// "jkc complete WORD...".
#pragma once

#include <string>

namespace jkc::cli {

// `words` are those behind "jkc", with a null behind the last, which is the one being typed. The first line says what the
// shell offers by itself: "files", "folders" or "nothing". Each further line is a word, a tab and what it means.
std::string completions(const char *const *words);

} // namespace jkc::cli
