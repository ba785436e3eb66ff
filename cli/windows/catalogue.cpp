#include <windows.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <unordered_map>

#include "report.h"
#include "source.h"
#include "translate.h"

// gettext's library is in no package for this system; what msgfmt writes is plain enough to be read here.
namespace jkc::cli {
namespace {

std::string content;
std::unordered_map<std::string_view, const char *> translations; // into the content

// The user's, as in "ja_JP" or "ja".
std::string language() {
    for (const char *name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char *value = std::getenv(name);
        if (value != nullptr && *value != '\0') {
            return value;
        }
    }
    return PRIMARYLANGID(GetUserDefaultUILanguage()) == LANG_JAPANESE ? "ja" : "";
}

uint32_t number_at(size_t offset) {
    uint32_t number = 0;
    if (offset <= content.size() && content.size() - offset >= sizeof number) {
        std::memcpy(&number, content.data() + offset, sizeof number);
    }
    return number;
}

// The text that an entry of a table tells; a NUL is behind it.
const char *text_at(size_t entry) {
    const size_t length = number_at(entry);
    const size_t offset = number_at(entry + 4);
    return offset < content.size() && length < content.size() - offset ? content.data() + offset : "";
}

} // namespace

void choose_language() {
    if (language().compare(0, 2, "ja") != 0) {
        return;
    }
    try {
        Source catalogue(folder_of_program() + JKC_BIN_TO_LOCALE + "/ja/LC_MESSAGES/jkc.mo");
        catalogue.read_all(
            [](const uint8_t *data, size_t length) { content.append(reinterpret_cast<const char *>(data), length); });
    } catch (const FileError &) {
        return; // in English, then
    }
    constexpr uint32_t kMagic = 0x950412DE;
    const size_t count = number_at(0) == kMagic ? number_at(8) : 0;
    const size_t texts = number_at(12);
    const size_t translated = number_at(16);
    for (size_t i = 0; i < count && texts + 8 * i < content.size(); ++i) {
        translations.emplace(text_at(texts + 8 * i), text_at(translated + 8 * i));
    }
}

const char *tr(const char *text) {
    const auto found = translations.find(text);
    return found == translations.end() ? text : found->second;
}

const char *tr_count(const char *one, const char *many, size_t count) {
    // Japanese has one form for all numbers, which is found under that for one.
    const auto found = translations.find(one);
    return found != translations.end() ? found->second : count == 1 ? one : many;
}

} // namespace jkc::cli
