#include "input.h"

#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>

#include "code_types.h"
#include "jkc.h"
#include "report.h"
#include "text_checks.h"

namespace jkc::cli {
namespace {

struct CloseUnlessStdin {
    void operator()(FILE *stream) const {
        if (stream != stdin) {
            std::fclose(stream);
        }
    }
};

void append_file(std::string &bytes, const std::string &name) {
    const std::unique_ptr<FILE, CloseUnlessStdin> stream(name == "-" ? stdin : std::fopen(name.c_str(), "rb"));
    if (!stream) {
        throw FileError(name, errno);
    }
    struct stat file {};
    if (fstat(fileno(stream.get()), &file) == 0 && S_ISREG(file.st_mode)) {
        bytes.reserve(bytes.size() + static_cast<size_t>(file.st_size));
    }
    std::array<char, 65536> data{};
    while (const size_t count = std::fread(data.data(), 1, data.size(), stream.get())) {
        bytes.append(data.data(), count);
    }
    if (std::ferror(stream.get()) != 0) {
        throw FileError(name, errno);
    }
}

} // namespace

Input::Input(const std::string &name) : name_(name), bytes_(kMark) {
    append_file(bytes_, name);
    marked_ = text().substr(0, kMark.size()) != kMark && is_surely_utf8(text());
}

std::string_view Input::text_behind_mark(int code_type) const {
    const bool has_mark = without_mark(code_type) != code_type;
    return text().substr(!has_mark ? 0 : is_utf16(code_type) ? 2 : kMark.size());
}

int Input::judged(int code_type) const {
    return marked_ && code_type == JKC_TYPE_UTF8_BOM ? static_cast<int>(JKC_TYPE_UTF8) : code_type;
}

} // namespace jkc::cli
