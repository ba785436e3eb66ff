#include "jni/exceptions.h"

namespace jkc {

void throw_new(JNIEnv *env, const char *class_name, const char *message) {
    const jclass cls = env->FindClass(class_name);
    if (cls != nullptr) {
        env->ThrowNew(cls, message);
    }
}

bool is_given(JNIEnv *env, jobject argument) {
    if (argument == nullptr) {
        throw_new(env, "java/lang/NullPointerException", "the data, path or stream is null");
    }
    return argument != nullptr;
}

ExceptionAside::ExceptionAside(JNIEnv *env) : env_(env) {
    if (env->ExceptionCheck() != JNI_FALSE) {
        exception_ = env->ExceptionOccurred();
        env->ExceptionClear();
    }
}

ExceptionAside::~ExceptionAside() {
    if (exception_ != nullptr) {
        env_->Throw(exception_);
    }
}

} // namespace jkc
