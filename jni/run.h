// What every judgement and conversion does around the library's entry point.
#pragma once

#include "jni/exceptions.h"
#include "jni/info.h"
#include "jni/reader_data.h"
#include "judge/input/source_bits.h"

namespace jkc {

// The source bits of a call from Java. The bit 0x40 beside the library's own keeps the entry points from setting
// theirs; both bits of JKC_MODE_READER are a stream.
constexpr uint32_t kJavaBuffer = JKC_MODE_BUFFER | 0x40;
constexpr uint32_t kJavaFile = JKC_MODE_FILE | 0x40;
constexpr uint32_t kJavaStream = JKC_MODE_READER;

// A callback that started another call would overwrite the block that the running one works on.
inline bool may_run(JNIEnv *env) {
    if (_jni_info != nullptr) {
        throw_new(env, kIllegalState, "another judgement or conversion is running");
    }
    return _jni_info == nullptr;
}

// Runs `call`, which takes the object's record, returns a result and gives back whatever it took. The result is stored
// even when `call` leaves an exception pending.
template <class Call>
jint run(JNIEnv *env, jobject self, jobject source, uint32_t source_bits, Call call) {
    const InfoRecord *info = info_of(env, self);
    if (info == nullptr || !is_given(env, source) || !may_run(env)) {
        return JKC_SUCCESS; // nobody sees it: an exception is pending
    }
    set_source(info->context, source_bits);
    const jint result = call(*info);
    clear_source(info->context);
    const ExceptionAside aside(env);
    env->SetIntField(self, info->sts, result);
    return result;
}

} // namespace jkc
