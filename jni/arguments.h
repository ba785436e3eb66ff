// Java arrays as the library takes them.
#pragma once

#include <jni.h>

#include <algorithm>
#include <cstddef>

namespace jkc {

// The elements of an array, given back (and what was written to them with them) at the end of the scope. A null array
// has none.
template <class Array, class Element, Element *(JNIEnv::*get)(Array, jboolean *),
          void (JNIEnv::*release)(Array, Element *, jint)>
class Elements {
public:
    Elements(JNIEnv *env, Array array)
        : env_(env), array_(array), data_(array != nullptr ? (env->*get)(array, nullptr) : nullptr) {}
    ~Elements() {
        if (data_ != nullptr) {
            (env_->*release)(array_, data_, 0);
        }
    }
    Elements(const Elements &) = delete;
    Elements &operator=(const Elements &) = delete;

    bool out_of_memory() const { return array_ != nullptr && data_ == nullptr; }

    Element *data() const { return data_; }

    // `length` as far as the array has so many.
    size_t clip(jint length) const {
        return static_cast<size_t>(std::clamp(length, 0, data_ != nullptr ? env_->GetArrayLength(array_) : 0));
    }

    // Where an answer is put; null when there is no room for one.
    Element *place() const { return clip(1) == 1 ? data_ : nullptr; }

private:
    JNIEnv *env_;
    Array array_;
    Element *data_;
};

using Bytes = Elements<jbyteArray, jbyte, &JNIEnv::GetByteArrayElements, &JNIEnv::ReleaseByteArrayElements>;
using Ints = Elements<jintArray, jint, &JNIEnv::GetIntArrayElements, &JNIEnv::ReleaseIntArrayElements>;

// A file's name, which Java hands over as bytes without an end. A longer one is cut.
constexpr jsize kLongestPath = 4095;

struct Path {
    Path(JNIEnv *env, jbyteArray bytes) {
        const jsize length = std::min(env->GetArrayLength(bytes), kLongestPath);
        env->GetByteArrayRegion(bytes, 0, length, reinterpret_cast<jbyte *>(text));
        text[length] = '\0';
    }

    char text[kLongestPath + 1];
};

} // namespace jkc
