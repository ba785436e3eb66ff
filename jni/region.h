// Bytes of a Java array of numbers, or of a direct buffer.
#pragma once

#include <jni.h>

#include <cstddef>
#include <cstdint>

namespace jkc {

// Where a direct buffer is; null for an array.
inline void *direct_address(JNIEnv *env, jobject memory, bool is_direct) {
    return is_direct ? env->GetDirectBufferAddress(memory) : nullptr;
}

// As long as one lives, the virtual machine may not collect garbage, and no JNI function but for another region's may be
// called. What runs meanwhile must be short.
class Region {
public:
    // `direct` is where the memory is if it is a direct buffer, else null.
    Region(JNIEnv *env, jobject memory, void *direct)
        : env_(env), array_(direct != nullptr ? nullptr : static_cast<jarray>(memory)),
          data_(static_cast<uint8_t *>(direct != nullptr ? direct : env->GetPrimitiveArrayCritical(array_, nullptr))) {}
    ~Region() {
        if (array_ != nullptr && data_ != nullptr) {
            env_->ReleasePrimitiveArrayCritical(array_, data_, 0);
        }
    }
    Region(const Region &) = delete;
    Region &operator=(const Region &) = delete;

    // Null when memory is short.
    uint8_t *data() const { return data_; }

private:
    JNIEnv *env_;
    jarray array_;
    uint8_t *data_;
};

// The flags of a call.
enum CallFlag : jint { kInputIsDirect = 1, kOutputIsDirect = 2, kIsLast = 4 };

// Beside the JkcConverterStops: it has ended with a status.
constexpr int kFailed = 3;

// What a call took and wrote, in bytes, and how it ended, which takes two bits, in one number.
inline jlong pack(int how, size_t taken, size_t written) {
    return static_cast<jlong>(static_cast<uint64_t>(how) << 62 | static_cast<uint64_t>(taken) << 31 | written);
}

} // namespace jkc
