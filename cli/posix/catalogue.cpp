#include <libintl.h>

#include <clocale>
#include <cstring>

#include "platform.h"
#include "translate.h"

namespace jkc::cli {

void choose_language() {
    std::setlocale(LC_CTYPE, "");
    const char *language = std::setlocale(LC_MESSAGES, "");
    if (language == nullptr || std::strcmp(language, "C") == 0 || std::strcmp(language, "POSIX") == 0) {
        return;
    }
    bindtextdomain("jkc", (folder_of_program() + JKC_BIN_TO_LOCALE).c_str());
    textdomain("jkc");
}

const char *tr(const char *text) { return gettext(text); }

const char *tr_count(const char *one, const char *many, size_t count) { return ngettext(one, many, count); }

} // namespace jkc::cli
