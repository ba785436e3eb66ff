// What every judgement and conversion does around the library's entry point.
#pragma once

#include "jni/exceptions.h"
#include "jni/info.h"
#include "judge/input/source_bits.h"

namespace jkc {

// The source bits of a call from Java. The bit 0x40 beside the library's own keeps the entry points from setting
// theirs; both bits of JKC_MODE_READER are a stream.
constexpr uint32_t kJavaBuffer = JKC_MODE_BUFFER | 0x40;
constexpr uint32_t kJavaFile = JKC_MODE_FILE | 0x40;
constexpr uint32_t kJavaStream = JKC_MODE_READER;

// Runs `call`, which takes the object's record, returns a result and gives back whatever it took. The result is stored
// even when `call` leaves an exception pending.
template <class Call>
jint run(JNIEnv *env, jobject self, jobject source, uint32_t source_bits, Call call) {
    InfoRecord *info = info_of(env, self);
    if (info == nullptr || !is_given(env, source)) {
        return JKC_SUCCESS; // nobody sees it: an exception is pending
    }
    const Use use(env, *info);
    if (use.refused()) {
        return JKC_SUCCESS;
    }
    set_source(info->context, source_bits);
    const jint result = call(*info);
    clear_source(info->context);
    const ExceptionAside aside(env);
    env->SetIntField(self, info->sts, result);
    return result;
}

} // namespace jkc
