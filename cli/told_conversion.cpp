#include "told_conversion.h"

#include <algorithm>
#include <vector>

namespace jkc::cli {

FedText::FedText(int code_type, const Route &route, Write write)
    : converter_(make_converter(code_type, route.target, route.options)), write_(std::move(write)) {}

// No exception crosses the library.
int32_t FedText::take_output(const uint8_t *data, uint64_t length, void *user_data) {
    auto *self = static_cast<FedText *>(user_data);
    try {
        self->write_({reinterpret_cast<const char *>(data), length});
        return JKC_SUCCESS;
    } catch (...) {
        self->thrown_ = std::current_exception();
        return JKC_EWRITE;
    }
}

void FedText::rethrow() const {
    if (thrown_) {
        std::rethrow_exception(thrown_);
    }
}

bool FedText::feed(std::string_view text) {
    status_ = jkc_converter_feed(converter_.get(), reinterpret_cast<const uint8_t *>(text.data()), text.size(),
                                 take_output, this);
    rethrow();
    return status_ == JKC_SUCCESS;
}

Converted FedText::finish() {
    if (status_ == JKC_SUCCESS) {
        status_ = jkc_converter_finish(converter_.get(), take_output, this);
        rethrow();
    }
    JkcConverterLosses losses = {};
    losses.size = sizeof losses;
    jkc_converter_losses(converter_.get(), &losses);
    return {status_, losses.ill_formed + losses.unmappable + losses.truncated, losses.unmappable};
}

Route route_to(int target, const Options &options) {
    Route route{target, {}};
    route.options.size = sizeof route.options;
    route.options.line_type = options.line_type;
    route.options.compose = options.compose ? 1 : 0;
    route.options.on_loss = options.on_loss;
    return route;
}

int choose_target(const Source &source, const std::vector<Part> &parts, const Options &options) {
    if (options.to == JKC_TYPE_ASCII && parts.front().type != JKC_TYPE_ASCII) {
        return JKC_TYPE_SJIS;
    }
    if (!options.any_variant) {
        return options.to;
    }
    std::vector<int> variants = options.to == JKC_TYPE_EUC ? std::vector<int>{JKC_TYPE_EUC, JKC_TYPE_EUC_51932,
                                                                              JKC_TYPE_EUC_MS, JKC_TYPE_EUC_20932}
                                                           : std::vector<int>{JKC_TYPE_JIS, JKC_TYPE_JIS2004};
    // A text that is in one already stays in it.
    const auto present = std::find(variants.begin(), variants.end(), parts.front().type);
    if (present != variants.end()) {
        std::rotate(variants.begin(), present, present + 1);
    }
    const Write nowhere = [](std::string_view /*text*/) {};
    int best = options.to;
    uint64_t least = UINT64_MAX;
    for (const int variant : variants) {
        Route route = route_to(variant, options);
        route.options.on_loss = JKC_ON_LOSS_OMIT; // which goes through to the end
        uint64_t lacking = 0;
        for (const Part &part : parts) {
            lacking += convert_part(source, part, route, nowhere, nullptr).unmappable;
        }
        if (lacking < least) {
            best = variant;
            least = lacking;
        }
        if (lacking == 0) {
            break;
        }
    }
    return best;
}

Converted convert_part(const Source &source, const Part &part, const Route &route, Write write,
                       const std::function<void(uint64_t)> &progress) {
    FedText text(part.type, route, std::move(write));
    uint64_t offset = part.begin;
    source.read(part.begin, part.end, [&](const uint8_t *data, size_t length) {
        offset += length;
        if (progress) {
            progress(offset);
        }
        return text.feed({reinterpret_cast<const char *>(data), length});
    });
    return text.finish();
}

} // namespace jkc::cli
