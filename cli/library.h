// The library's records and answers in C++ dress.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "jkc.h"

namespace jkc::cli {

struct ReleaseContext {
    void operator()(JkcContext *ctx) const { release_jkc(ctx); }
};
using Context = std::unique_ptr<JkcContext, ReleaseContext>;

// Throws std::bad_alloc.
Context make_context();

// Whether a judgement's answer names no single code type: several fit, or none.
bool is_undecided(int judged);

// Why an operation ended with this negative status, and with this errno if it was one of the system.
std::string status_reason(int32_t status, int error_number);

} // namespace jkc::cli
