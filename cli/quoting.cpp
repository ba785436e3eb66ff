#include "quoting.h"

#include <unistd.h>

#include <cwchar>
#include <cwctype>

#include "translate.h"

namespace jkc::cli {
namespace {

// How many bytes at the front are a printable character; 0: there is none.
size_t printable_length(const char *text, size_t length) {
    std::mbstate_t state{};
    wchar_t character = 0;
    const size_t taken = std::mbrtowc(&character, text, length, &state);
    const bool is_character = taken != 0 && taken <= length; // errors are huge numbers
    return is_character && std::iswprint(static_cast<std::wint_t>(character)) != 0 ? taken : 0;
}

std::string quoted(const std::string &name) {
    std::string text;
    bool plain = true;
    for (size_t i = 0; i < name.size();) {
        const size_t length = printable_length(name.data() + i, name.size() - i);
        if (length == 0) {
            plain = false;
            text += format("\\%03o", static_cast<unsigned>(static_cast<unsigned char>(name[i])));
        } else if (name[i] == '\\' || name[i] == '\'') {
            text += '\\';
        }
        text.append(name, i, length);
        i += length == 0 ? 1 : length;
    }
    return plain ? name : "$'" + text + "'";
}

} // namespace

std::string shown_on(int descriptor, const std::string &name) { return isatty(descriptor) != 0 ? quoted(name) : name; }

std::string shown(const std::string &name) { return shown_on(STDERR_FILENO, name); }

} // namespace jkc::cli
