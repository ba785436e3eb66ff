// Java exceptions, seen from native code.
#pragma once

#include <jni.h>

namespace jkc {

constexpr const char *kIllegalState = "java/lang/IllegalStateException";

void throw_new(JNIEnv *env, const char *class_name, const char *message);

// Tells whether an argument is there; throws NullPointerException when it is not.
bool is_given(JNIEnv *env, jobject argument);

// Takes the pending exception away, if there is one, and puts it back at the end of the scope: hardly any JNI function
// may be called while one is pending.
class ExceptionAside {
public:
    explicit ExceptionAside(JNIEnv *env);
    ~ExceptionAside();
    ExceptionAside(const ExceptionAside &) = delete;
    ExceptionAside &operator=(const ExceptionAside &) = delete;

private:
    JNIEnv *env_;
    jthrowable exception_ = nullptr;
};

} // namespace jkc
