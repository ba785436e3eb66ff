#include "losses.h"

#include <algorithm>
#include <cinttypes>
#include <exception>

#include "code_types.h"
#include "objects.h"
#include "translate.h"

namespace jkc::cli {
namespace {

constexpr int32_t kNoMore = 1; // what the observer answers when the caller wants no more, or has thrown

// What the observer of one run needs.
struct Telling {
    const Source *source;
    uint64_t begin; // from where the library counts: behind a BOM
    uint64_t lines; // in front of the part
    const std::function<bool(const PlacedLoss &)> *take;
    std::exception_ptr thrown;
};

int32_t tell(const JkcLoss *loss, void *user_data) {
    auto *telling = static_cast<Telling *>(user_data);
    try {
        PlacedLoss placed{*loss, {}};
        placed.loss.offset += telling->begin;
        placed.loss.line += telling->lines;
        placed.bytes = telling->source->slice(placed.loss.offset, placed.loss.offset + loss->length);
        return (*telling->take)(placed) ? JKC_SUCCESS : kNoMore;
    } catch (...) {
        telling->thrown = std::current_exception();
        return kNoMore;
    }
}

// The length of the BOM that a converter passes at the begin of a part.
uint64_t mark_length(const Source &source, const Part &part) {
    const std::string front = source.slice(part.begin, std::min(part.end, part.begin + 3));
    switch (without_mark(part.type)) {
    case JKC_TYPE_UTF8:
        return front == "\xEF\xBB\xBF" ? 3 : 0;
    case JKC_TYPE_UTF16BE:
        return front.substr(0, 2) == "\xFE\xFF" ? 2 : 0;
    case JKC_TYPE_UTF16LE:
        return front.substr(0, 2) == "\xFF\xFE" ? 2 : 0;
    default:
        return 0;
    }
}

} // namespace

std::string in_hex(const std::string &bytes) {
    std::string hex;
    for (const char byte : bytes) {
        hex += format("%s%02X", hex.empty() ? "" : " ", static_cast<unsigned>(static_cast<unsigned char>(byte)));
    }
    return hex;
}

std::string utf8_of(int64_t code_point) {
    const auto c = static_cast<uint32_t>(code_point);
    std::string text;
    const auto trail = [&](int shift) { text += static_cast<char>(0x80 | (c >> shift & 0x3F)); };
    if (c < 0x800) {
        text += static_cast<char>(0xC0 | c >> 6);
    } else if (c < 0x10000) {
        text += static_cast<char>(0xE0 | c >> 12);
        trail(6);
    } else {
        text += static_cast<char>(0xF0 | c >> 18);
        trail(12);
        trail(6);
    }
    trail(0);
    return text;
}

void for_each_loss(const Source &source, const Part &part, const Route &route,
                   const std::function<bool(const PlacedLoss &)> &take) {
    Telling telling{&source, part.begin + mark_length(source, part), part.first_line - 1, &take, nullptr};
    JkcConverterOptions options = route.options;
    options.places = 1;
    options.observer = tell;
    options.observer_data = &telling;
    const Converter converter = make_converter(part.type, route.target, options);
    int32_t status = JKC_SUCCESS;
    source.read(part.begin, part.end, [&](const uint8_t *data, size_t length) {
        status = jkc_converter_feed(converter.get(), data, length, nullptr, nullptr);
        return status == JKC_SUCCESS;
    });
    if (status == JKC_SUCCESS) {
        jkc_converter_finish(converter.get(), nullptr, nullptr);
    }
    if (telling.thrown) {
        std::rethrow_exception(telling.thrown);
    }
}

std::string describe(const PlacedLoss &loss) {
    const std::string bytes = in_hex(loss.bytes);
    if (loss.loss.code_point >= 0) {
        const std::string number = format("U+%04" PRIX64, static_cast<uint64_t>(loss.loss.code_point));
        const bool can_be_shown = loss.loss.code_point >= 0xA0; // a control character cannot
        return can_be_shown ? number + " (" + utf8_of(loss.loss.code_point) + ")" : number;
    }
    switch (loss.loss.kind) {
    case JKC_LOSS_UNMAPPABLE:
        return format(tr("code %s without a character"), bytes.c_str());
    case JKC_LOSS_TRUNCATED:
        return format(tr("cut character %s"), bytes.c_str());
    default:
        return format(tr("ill-formed bytes %s"), bytes.c_str());
    }
}

std::string describe_place(const JkcLoss &loss) {
    return format(tr("line %llu, column %llu"), static_cast<unsigned long long>(loss.line),
                  static_cast<unsigned long long>(loss.column));
}

} // namespace jkc::cli
