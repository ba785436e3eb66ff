// Conversions from a code type that is told.
#pragma once

#include <exception>
#include <functional>
#include <string_view>

#include "jkc/converter.h"
#include "objects.h"
#include "options.h"
#include "parts.h"

namespace jkc::cli {

// How parts are converted.
struct Route {
    int target;
    JkcConverterOptions options; // without an observer
};

// What a conversion came to.
struct Converted {
    int32_t status = JKC_SUCCESS;
    uint64_t lost = 0;       // how many losses there were
    uint64_t unmappable = 0; // how many of them the target lacks
};

using Write = std::function<void(std::string_view)>;

// A text that is converted in pieces. `write` receives the output, and may throw.
class FedText {
public:
    FedText(int code_type, const Route &route, Write write);
    // False when the text has come to an end of its own.
    bool feed(std::string_view text);
    Converted finish();

private:
    static int32_t take_output(const uint8_t *data, uint64_t length, void *user_data);
    void rethrow() const;

    Converter converter_;
    Write write_;
    std::exception_ptr thrown_;
    int32_t status_ = JKC_SUCCESS;
};

// `target` is that of the options, or one that they leave open.
Route route_to(int target, const Options &options);

// The target of the options: of the variants that they leave open the one that lacks least of the parts, for which these
// are read.
int choose_target(const Source &source, const std::vector<Part> &parts, const Options &options);

// Converts a part. `progress`, if there is one, is told the offset in the source.
Converted convert_part(const Source &source, const Part &part, const Route &route, Write write,
                       const std::function<void(uint64_t)> &progress);

} // namespace jkc::cli
