// The program's texts in the language of the locale.
#pragma once

#include <cstddef>
#include <string>

// Marks a text that is translated where it is used.
#define JKC_TEXT(text) text

namespace jkc::cli {

// Takes the user's language. Translations are looked for beside the program, wherever it has been moved to.
void choose_language();

// The translation of a text. Not for the empty one, which stands for the catalogue itself.
[[gnu::format_arg(1)]] const char *tr(const char *text);

// The same for a text that depends on a number.
[[gnu::format_arg(1), gnu::format_arg(2)]] const char *tr_count(const char *one, const char *many, size_t count);

// As printf() would print it.
[[gnu::format(printf, 1, 2)]] std::string format(const char *pattern, ...);

// What the system says of an errno value.
std::string system_text(int error_number);

} // namespace jkc::cli
