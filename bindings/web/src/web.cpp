// What the module src/native.js calls. Text comes and goes in pieces, through one buffer that all share: nothing here
// is as long as a text, but for what unmojibake() is given. Records are rows of doubles, which hold every offset.
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <new>

#include "code_types.h"
#include "jkc.h"

#define JKC_WEB_EXPORT extern "C" __attribute__((used, visibility("default")))
#define JKC_WEB_IMPORT(name) extern "C" __attribute__((import_module("jkc"), import_name(name)))

// What the module gives: where output goes, and losses.
JKC_WEB_IMPORT("write") void web_write(const uint8_t *data, size_t length);
JKC_WEB_IMPORT("lose")
void web_lose(int32_t kind, double offset, double length, double code, double code_point, double line, double column);
// Throws, through whatever has called.
JKC_WEB_IMPORT("memory_is_short") __attribute__((noreturn)) void web_memory_is_short();

void *operator new(size_t size) {
    void *memory = malloc(size);
    if (memory == nullptr) {
        web_memory_is_short();
    }
    return memory;
}
void operator delete(void *memory) noexcept { free(memory); }

// The one variable that the library asks for names a set of kernels. There is one set here.
extern "C" char *getenv(const char * /*name*/) { return nullptr; }

// What malloc() takes memory from. That of the C library grows by what is lacking, a little at a time, and each step
// can cost the engine a copy of it all.
extern "C" uint8_t __heap_base;
extern "C" void *sbrk(intptr_t increment) {
    constexpr size_t kPage = 65536;
    static auto end = reinterpret_cast<uintptr_t>(&__heap_base);
    const size_t pages = __builtin_wasm_memory_size(0);
    const size_t wanted = (end + static_cast<size_t>(increment) + kPage - 1) / kPage;
    for (size_t more = pages / 4; wanted > pages && __builtin_wasm_memory_grow(0, wanted - pages + more) == SIZE_MAX;) {
        if (more == 0) {
            return reinterpret_cast<void *>(-1);
        }
        more /= 2;
    }
    const uintptr_t begin = end;
    end += static_cast<uintptr_t>(increment);
    return reinterpret_cast<void *>(begin);
}

namespace {

constexpr size_t kPiece = 65536; // as much as is taken at once
uint8_t piece[kPiece];

constexpr size_t kLongestMark = 3;

class Conversion {
public:
    Conversion(int32_t source, int32_t target, JkcConverterOptions options, uint32_t most_losses)
        : source_(source), most_losses_(most_losses) {
        options.places = most_losses > 0;
        options.observer = lose;
        options.observer_data = this;
        jkc_converter_create(&converter_, source, target, &options);
    }
    ~Conversion() { jkc_converter_release(converter_); }
    Conversion(const Conversion &) = delete;
    Conversion &operator=(const Conversion &) = delete;

    bool is_made() const { return converter_ != nullptr; } // else memory is short: the module looks at the rest

    int32_t feed(size_t length) {
        for (size_t i = 0; i < length && front_length_ < kLongestMark; ++i) {
            front_[front_length_++] = piece[i];
        }
        return jkc_converter_feed(converter_, piece, length, write, nullptr);
    }
    int32_t finish() { return jkc_converter_finish(converter_, write, nullptr); }

    double loss_count() const {
        JkcConverterLosses losses = {};
        losses.size = sizeof losses;
        jkc_converter_losses(converter_, &losses);
        return static_cast<double>(losses.ill_formed + losses.unmappable + losses.truncated);
    }

private:
    static int32_t write(const uint8_t *data, uint64_t length, void * /*user_data*/) {
        web_write(data, static_cast<size_t>(length));
        return JKC_SUCCESS;
    }

    static int32_t lose(const JkcLoss *loss, void *user_data) {
        auto *self = static_cast<Conversion *>(user_data);
        if (self->told_ < self->most_losses_) {
            ++self->told_;
            web_lose(loss->kind, static_cast<double>(loss->offset + self->mark_length()), loss->length,
                     static_cast<double>(loss->code), static_cast<double>(loss->code_point),
                     static_cast<double>(loss->line), static_cast<double>(loss->column));
        }
        return JKC_SUCCESS;
    }

    // The library counts offsets from behind a byte-order mark.
    uint64_t mark_length() const {
        const auto begins_with = [this](const char *mark, size_t length) {
            return front_length_ >= length && memcmp(front_, mark, length) == 0 ? length : 0;
        };
        switch (jkc::cli::without_mark(source_)) {
        case JKC_TYPE_UTF8:
            return begins_with("\xEF\xBB\xBF", 3);
        case JKC_TYPE_UTF16BE:
            return begins_with("\xFE\xFF", 2);
        case JKC_TYPE_UTF16LE:
            return begins_with("\xFF\xFE", 2);
        default:
            return 0;
        }
    }

    int32_t source_;
    uint32_t most_losses_; // how many are told
    uint32_t told_ = 0;
    JkcConverter *converter_ = nullptr;
    uint8_t front_[kLongestMark] = {};
    size_t front_length_ = 0;
};

int32_t line_ends_of(const JkcDetection &found) {
    switch (jkc::cli::without_mark(found.decision)) {
    case JKC_TYPE_UTF16BE:
        return found.line_ends_utf16be;
    case JKC_TYPE_UTF16LE:
        return found.line_ends_utf16le;
    default:
        return found.line_ends_bytes;
    }
}

} // namespace

JKC_WEB_EXPORT uint32_t web_version() { return jkc_version_number(); }
JKC_WEB_EXPORT uint8_t *web_piece() { return piece; }
JKC_WEB_EXPORT size_t web_piece_size() { return sizeof piece; }

JKC_WEB_EXPORT const char *web_label(int32_t type) {
    static char name[16];
    jkc_typeto_name(name, type);
    return name;
}
JKC_WEB_EXPORT const char *web_rule(int32_t rule) { return jkc_rule_name(rule); }

// Null: memory is short.
JKC_WEB_EXPORT JkcDetector *web_detector() {
    JkcDetector *detector = nullptr;
    jkc_detector_create(&detector, nullptr);
    return detector;
}
JKC_WEB_EXPORT void web_detector_feed(JkcDetector *detector, size_t length) {
    jkc_detector_feed(detector, piece, length);
}
// Decision, open, rule, confidence, line ends; for each candidate type, valid, ill-formed, kana, penalty, first error.
JKC_WEB_EXPORT const double *web_detector_finish(JkcDetector *detector) {
    static double row[5 + 6 * JKC_CANDIDATES];
    JkcDetection found = {};
    found.size = sizeof found;
    jkc_detector_finish(detector, &found);
    double *out = row;
    for (const int32_t value : {found.decision, found.open, found.rule, found.confidence, line_ends_of(found)}) {
        *out++ = value;
    }
    for (const JkcEvidence &e : found.evidence) {
        for (const int64_t value : {int64_t{e.type}, e.valid, e.ill_formed, e.kana, e.penalty, e.first_error}) {
            *out++ = static_cast<double>(value);
        }
    }
    return row;
}
JKC_WEB_EXPORT void web_detector_free(JkcDetector *detector) { jkc_detector_release(detector); }

// Null: memory is short.
JKC_WEB_EXPORT Conversion *web_converter(int32_t source, int32_t target, int32_t line_type, int32_t on_loss,
                                         int32_t compose, int32_t geta, uint32_t most_losses) {
    JkcConverterOptions options = {};
    options.size = sizeof options;
    options.line_type = static_cast<uint32_t>(line_type);
    options.on_loss = static_cast<uint8_t>(on_loss);
    options.compose = compose != 0;
    options.geta = geta != 0;
    auto *conversion = new Conversion(source, target, options, most_losses);
    if (!conversion->is_made()) {
        delete conversion;
        return nullptr;
    }
    return conversion;
}
JKC_WEB_EXPORT int32_t web_converter_feed(Conversion *conversion, size_t length) { return conversion->feed(length); }
JKC_WEB_EXPORT int32_t web_converter_finish(Conversion *conversion) { return conversion->finish(); }
JKC_WEB_EXPORT double web_converter_loss_count(const Conversion *conversion) { return conversion->loss_count(); }
JKC_WEB_EXPORT void web_converter_free(Conversion *conversion) { delete conversion; }

// What is freed with jkc_free(), as what the library allocates.
JKC_WEB_EXPORT uint8_t *web_allocate(size_t size) { return static_cast<uint8_t *>(operator new(size)); }
JKC_WEB_EXPORT void web_free(void *memory) { jkc_free(memory); }

// Status, the mended text, its length, confidence, characters lost, count of steps; for each what it was and what it was
// read as.
JKC_WEB_EXPORT const double *web_unmojibake(const uint8_t *text, size_t length) {
    static double row[6 + 2 * JKC_MISREADINGS];
    uint8_t *mended = nullptr;
    size_t mended_length = 0;
    JkcMending mending = {};
    mending.size = sizeof mending;
    const int32_t status = jkc_unmojibake(text, length, &mended, &mended_length, &mending);
    double *out = row;
    *out++ = status;
    *out++ = static_cast<double>(reinterpret_cast<uintptr_t>(mended));
    *out++ = static_cast<double>(mended_length);
    *out++ = mending.confidence;
    *out++ = static_cast<double>(mending.lost);
    *out++ = mending.count;
    for (const JkcMisreading &step : mending.steps) {
        *out++ = step.was;
        *out++ = step.read_as;
    }
    return row;
}
JKC_WEB_EXPORT const char *web_misread(int32_t encoding) { return jkc_misread_name(encoding); }
