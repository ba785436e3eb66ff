// The library's objects, which release themselves.
#pragma once

#include <memory>
#include <new>
#include <stdexcept>

#include "jkc.h"
#include "jkc/converter.h"
#include "jkc/detector.h"

namespace jkc::cli {

struct ReleaseDetector {
    void operator()(JkcDetector *detector) const { jkc_detector_release(detector); }
};
using Detector = std::unique_ptr<JkcDetector, ReleaseDetector>;

// Throws std::bad_alloc.
inline Detector make_detector() {
    JkcDetector *detector = nullptr;
    if (jkc_detector_create(&detector, nullptr) != JKC_SUCCESS) {
        throw std::bad_alloc();
    }
    return Detector(detector);
}

inline JkcDetection finish(const Detector &detector) {
    JkcDetection found = {};
    found.size = sizeof found;
    jkc_detector_finish(detector.get(), &found);
    return found;
}

struct ReleaseConverter {
    void operator()(JkcConverter *converter) const { jkc_converter_release(converter); }
};
using Converter = std::unique_ptr<JkcConverter, ReleaseConverter>;

// Throws std::bad_alloc, or std::logic_error for a code type or an option that there is not.
inline Converter make_converter(int source, int target, const JkcConverterOptions &options) {
    JkcConverter *converter = nullptr;
    const int32_t status = jkc_converter_create(&converter, source, target, &options);
    if (status == JKC_EALLOC) {
        throw std::bad_alloc();
    }
    if (status != JKC_SUCCESS) {
        throw std::logic_error("no such conversion");
    }
    return Converter(converter);
}

} // namespace jkc::cli
