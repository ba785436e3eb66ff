#include "lines.h"

#include <array>
#include <cerrno>
#include <cinttypes>
#include <cstdio>
#include <memory>

#include "code_types.h"
#include "input.h"
#include "library.h"
#include "output.h"
#include "text_checks.h"
#include "translate.h"

namespace jkc::cli {
namespace {

// A file held by the library in the code type in which its lines are shown.
class HeldFile {
public:
    // Throws FileError.
    HeldFile(const Input &in, int from, int to) : slot_(open(in, without_mark(from), to, &judged_)) {
        // The slot is free again when opening failed, and its error number gone; but errno still is what it was.
        if (slot_ < 0 && slot_ != JKC_EOF) {
            throw FileError(in.name(), status_reason(static_cast<int32_t>(slot_), errno));
        }
        line_.resize(slot_ < 0 ? 0 : static_cast<size_t>(jkc_io_get_size(slot_)));
    }
    ~HeldFile() {
        if (slot_ >= 0) {
            jkc_io_close(slot_);
        }
    }
    HeldFile(const HeldFile &) = delete;
    HeldFile &operator=(const HeldFile &) = delete;

    // The code type that the file was judged to be; -1 when none fits, a set when several do.
    int judged() const { return slot_ < 0 ? -1 : static_cast<int>(judged_); }

    // Takes the next line and answers its number of characters, or a status.
    int64_t next() { return jkc_io_get_line(slot_, line_.data(), line_.size(), &length_); }
    std::string_view line() const { return {line_.data(), length_}; }
    size_t size() const { return line_.size(); }

private:
    // The library takes the name of a file, not its text.
    static int64_t open(const Input &in, int from, int to, uint64_t *judged) {
        const std::unique_ptr<FILE, int (*)(FILE *)> copy(std::tmpfile(), std::fclose);
        const std::string_view text = in.for_library();
        if (!copy || std::fwrite(text.data(), 1, text.size(), copy.get()) != text.size() ||
            std::fflush(copy.get()) != 0) {
            throw FileError(tr("temporary file"), errno);
        }
        std::rewind(copy.get());
        return jkc_io_open(("/dev/fd/" + std::to_string(fileno(copy.get()))).c_str(), 0, from, to, 0, judged);
    }

    uint64_t judged_ = 0;
    int64_t slot_;
    std::string line_; // room for the whole text, so that no line comes in pieces
    uint64_t length_ = 0;
};

// Numbers the lines and gathers them for the output.
class Listing {
public:
    Listing(Output &out, int code_type) : out_(out), code_type_(code_type) {}

    void add(int64_t characters, std::string_view line) {
        std::array<char, 48> numbers{};
        std::snprintf(numbers.data(), numbers.size(), "%6" PRIu64 " %6" PRId64 "  ", next_number(), characters);
        ++count_;
        text_ += encode_ascii(numbers.data(), code_type_);
        text_ += line;
        text_ += encode_ascii("\n", code_type_);
        constexpr size_t kEnough = 65536;
        if (text_.size() >= kEnough) {
            flush();
        }
    }
    uint64_t next_number() const { return count_ + 1; }
    void flush() {
        out_.print(text_);
        text_.clear();
    }

private:
    Output &out_;
    int code_type_;
    uint64_t count_ = 0;
    std::string text_;
};

void list_lines(const std::string &name, HeldFile &file, Listing &listing) {
    // Empty lines that were not listed yet: at a character that the end of the text cuts, the library gives empty
    // lines for ever. Each real one takes a byte of the text, so more of them than bytes tell that it is so.
    size_t empty = 0;
    int64_t characters = 0;
    while ((characters = file.next()) >= 0 && empty <= file.size()) {
        if (file.line().empty()) {
            ++empty;
            continue;
        }
        for (; empty > 0; --empty) {
            listing.add(0, "");
        }
        listing.add(characters, file.line());
    }
    if (characters != JKC_EOF) {
        listing.flush();
        const unsigned long long number = listing.next_number() + empty;
        throw FileError(name, characters < 0 ? format(tr("line %llu: invalid bytes"), number)
                                             : tr("the text ends inside a character"));
    }
    for (; empty > 0; --empty) {
        listing.add(0, "");
    }
    listing.flush();
}

} // namespace

ExitCode lines(const Options &options) {
    const std::string name = options.files.empty() ? "-" : options.files.front();
    // Shown without a mark, which would stand behind the first number; and as ASCII, Shift_JIS is written.
    const int to = options.to == JKC_TYPE_ASCII ? static_cast<int>(JKC_TYPE_SJIS) : without_mark(options.to);
    const Input in(name);
    HeldFile file(in, options.from, to);
    if (const auto binary_byte = find_binary_byte(in.text(), file.judged())) {
        say(name, describe_binary(in.text(), *binary_byte));
        return kUndecidedOrLost;
    }
    if (is_undecided(file.judged())) {
        say(name, undecided_reason(file.judged(), options.from));
        return kUndecidedOrLost;
    }
    Output out;
    Listing listing(out, to);
    list_lines(name, file, listing);
    out.commit();
    return kDone;
}

} // namespace jkc::cli
