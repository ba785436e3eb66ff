// The library's code types as people name them.
#pragma once

#include <string>
#include <vector>

#include "jkc.h"

namespace jkc::cli {

// Answers the code type of a name or alias; case, '-' and '_' do not count. JKC_ECTYPE when there is none.
int find_code_type(const std::string &name);

// "; did you mean 'X'?" for a name that is none, or nothing.
std::string suggest_code_type(const std::string &name);

// Whether a name that has a code type is that of an encoding with variants, of which the code type is one.
bool leaves_variant_open(const std::string &name);

// The library's own name.
std::string code_type_name(int code_type);

// The names in what a judgement answered when several code types fit: "SJIS, EUC".
std::string judged_set_names(int judged_set);

struct CodeName {
    std::string name;
    const char *meaning; // not translated
    bool is_alias;       // of one in front of it
};

// But for those with brackets, which shells want quoted: each has an alias without.
std::vector<CodeName> code_names();

// Text for --list.
std::string code_type_list();

bool is_unicode(int code_type);

bool is_utf16(int code_type);

// ASCII and JIS.
bool is_7bit(int code_type);

// The same encoding without a byte-order mark.
int without_mark(int code_type);

// ASCII text in a code type.
std::string encode_ascii(const std::string &ascii, int code_type);

} // namespace jkc::cli
