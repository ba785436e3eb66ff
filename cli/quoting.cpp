#include "quoting.h"

#include "platform.h"
#include "translate.h"

namespace jkc::cli {
namespace {

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

std::string shown_on(int descriptor, const std::string &name) { return is_terminal(descriptor) ? quoted(name) : name; }

std::string shown(const std::string &name) { return shown_on(kStandardError, name); }

} // namespace jkc::cli
