// A writer for the conversion functions that keeps each piece it is handed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "support/case_file.h"

namespace jkc::testing {

// Pass CollectingWriter::write as the writer and the object's address as its user data.
struct CollectingWriter {
    std::vector<std::string> pieces;
    size_t answer_at = 0; // the call (from 1) that is answered with `answer`; 0: none
    int32_t answer = 0;

    static int32_t write(const uint8_t *data, uint64_t length, void *user_data) {
        auto *self = static_cast<CollectingWriter *>(user_data);
        self->pieces.emplace_back(reinterpret_cast<const char *>(data), length);
        return self->pieces.size() == self->answer_at ? self->answer : 0;
    }

    std::string text() const { return joined(pieces); }
};

} // namespace jkc::testing
