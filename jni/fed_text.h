// A converter that is fed from Java: it keeps its losses, with their places.
#pragma once

#include "jkc/converter.h"
#include "jni/line_places.h"

namespace jkc {

struct KeptLoss {
    JkcLoss loss;
    Place place;
};

class FedText {
public:
    // The memory is filled with zeros. 0 or a status, as jkc_converter_create(). At most `keep` losses are kept.
    int32_t init(int32_t from, int32_t to, const JkcConverterOptions &options, size_t keep);
    void destroy();
    void reset();

    // As jkc_converter_run().
    int32_t run(const uint8_t *&in, size_t in_length, uint8_t *&out, size_t out_length, bool last);

    // What it has ended with.
    int32_t status() const { return status_; }
    JkcConverterLosses losses() const;
    const KeptLoss *kept() const { return kept_; }
    size_t kept_count() const { return kept_count_; }

private:
    static int32_t keep_loss(const JkcLoss *loss, void *user_data);
    void keep(const JkcLoss &loss);

    JkcConverter *converter_;
    int32_t status_;
    KeptLoss *kept_;
    size_t kept_count_;
    size_t kept_room_;
    size_t most_;
    LinePlaces places_;
};

} // namespace jkc
