#include "code_types.h"

#include <array>
#include <sstream>

#include "suggest.h"
#include "translate.h"

namespace jkc::cli {
namespace {

struct CodeType {
    int type;
    const char *meaning;
    const char *aliases; // separated by spaces; the library's own name goes without saying
};

constexpr std::array kCodeTypes{
    CodeType{JKC_TYPE_ASCII, JKC_TEXT("7-bit text; as a target, the rest is written as SJIS"),
             "US-ASCII ISO646-US ANSI_X3.4-1968 CP20127"},
    CodeType{JKC_TYPE_JIS, JKC_TEXT("ISO-2022-JP with the characters of code page 50221"),
             "JIS ISO-2022-JP ISO-2022-JP-MS CP50221 csISO2022JP x-windows-50221"},
    CodeType{JKC_TYPE_JIS2004, JKC_TEXT("ISO-2022-JP with JIS X 0213:2004"),
             "JIS2 JIS2004 ISO-2022-JP-2004 ISO-2022-JP-3"},
    CodeType{JKC_TYPE_SJIS, JKC_TEXT("Shift_JIS as Windows code page 932"),
             "Shift_JIS CP932 Windows-31J Windows-932 sjis-win MS932 MS_Kanji x-sjis csShiftJIS csWindows31J"},
    CodeType{JKC_TYPE_EUC, JKC_TEXT("EUC-JP, JIS X 0208 by the standard mapping"),
             "EUC-JP ujis x-euc-jp csEUCPkdFmtJapanese"},
    CodeType{JKC_TYPE_EUC_20932, JKC_TEXT("EUC-JP as code page 20932, with JIS X 0212"), "EUC1 CP20932 Windows-20932"},
    CodeType{JKC_TYPE_EUC_51932, JKC_TEXT("EUC-JP as code page 51932"), "EUC2 CP51932 Windows-51932"},
    CodeType{JKC_TYPE_EUC_MS, "eucJP-ms", "EUC3 EUC-MS eucJP-ms eucJP-win eucJP-open"},
    CodeType{JKC_TYPE_UTF16BE, JKC_TEXT("UTF-16 big-endian, no byte-order mark"), "UTF-16BE UCS-2BE CP1201"},
    CodeType{JKC_TYPE_UTF16BE_BOM, JKC_TEXT("UTF-16 big-endian with byte-order mark"), "UTF-16BE-BOM UnicodeBig"},
    CodeType{JKC_TYPE_UTF16LE, JKC_TEXT("UTF-16 little-endian, no byte-order mark"), "UTF-16LE UCS-2LE CP1200"},
    CodeType{JKC_TYPE_UTF16LE_BOM, JKC_TEXT("UTF-16 little-endian with byte-order mark"),
             "UTF-16LE-BOM UTF-16 Unicode"},
    CodeType{JKC_TYPE_UTF8, JKC_TEXT("UTF-8, no byte-order mark"), "UTF-8 UTF-8N CP65001"},
    CodeType{JKC_TYPE_UTF8_BOM, JKC_TEXT("UTF-8 with byte-order mark"), "UTF-8-BOM UTF-8-SIG"},
};

// The library's own name, and the aliases.
std::vector<std::string> names_of(const CodeType &row) {
    std::vector<std::string> names{code_type_name(row.type)};
    std::istringstream aliases(row.aliases);
    for (std::string alias; aliases >> alias;) {
        names.push_back(alias);
    }
    return names;
}

} // namespace

int find_code_type(const std::string &name) {
    const std::string wanted = plain_word(name);
    for (const CodeType &row : kCodeTypes) {
        for (const std::string &known : names_of(row)) {
            if (plain_word(known) == wanted) {
                return row.type;
            }
        }
    }
    return JKC_ECTYPE;
}

std::string suggest_code_type(const std::string &name) {
    Suggestion suggestion(name);
    for (const CodeType &row : kCodeTypes) {
        for (const std::string &known : names_of(row)) {
            suggestion.offer(known);
        }
    }
    return suggestion.text();
}

bool leaves_variant_open(const std::string &name) {
    const std::string wanted = plain_word(name);
    return wanted == plain_word("EUC-JP") || wanted == plain_word("ISO-2022-JP");
}

std::string code_type_name(int code_type) {
    std::array<char, 16> name{};
    return {name.data(), jkc_typeto_name(name.data(), code_type)};
}

std::string judged_set_names(int judged_set) {
    std::array<char, 256> list{};
    jkc_judged_type_names(list.data(), list.size(), judged_set);
    std::string names;
    for (const char *p = list.data(); *p != '\0'; ++p) {
        names += *p == ';' ? std::string(", ") : std::string(1, *p);
    }
    return names;
}

std::vector<CodeName> code_names() {
    std::vector<CodeName> names;
    for (const CodeType &row : kCodeTypes) {
        bool is_alias = false;
        for (const std::string &name : names_of(row)) {
            if (name.find('(') == std::string::npos) {
                names.push_back({name, row.meaning, is_alias});
                is_alias = true;
            }
        }
    }
    return names;
}

std::string code_type_list() {
    constexpr size_t kNameWidth = 16;
    std::string text;
    for (const CodeType &row : kCodeTypes) {
        std::string name = code_type_name(row.type);
        name.resize(kNameWidth, ' ');
        text += name + tr(row.meaning) + "\n" + std::string(kNameWidth, ' ') + row.aliases + "\n";
    }
    return text;
}

bool is_unicode(int code_type) { return code_type >= JKC_TYPE_UTF16BE && code_type <= JKC_TYPE_UTF8_BOM; }

bool is_7bit(int code_type) {
    return code_type == JKC_TYPE_ASCII || code_type == JKC_TYPE_JIS || code_type == JKC_TYPE_JIS2004;
}

bool is_utf16(int code_type) { return code_type >= JKC_TYPE_UTF16BE && code_type <= JKC_TYPE_UTF16LE_BOM; }

int without_mark(int code_type) { return jkc_cmp_bom(code_type - 1, code_type) == 1 ? code_type - 1 : code_type; }

std::string encode_ascii(const std::string &ascii, int code_type) {
    if (!is_utf16(code_type)) {
        return ascii;
    }
    const bool big_endian = without_mark(code_type) == JKC_TYPE_UTF16BE;
    std::string units;
    for (const char c : ascii) {
        units += big_endian ? std::string{'\0', c} : std::string{c, '\0'};
    }
    return units;
}

} // namespace jkc::cli
