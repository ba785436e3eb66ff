// The native side of one Java object.
#pragma once

#include <jni.h>

#include "core/internal.h"

namespace jkc {

struct InfoRecord {
    // Of the call that created the object and valid no longer than it: every later call uses its own.
    JNIEnv *env;
    jclass cls;
    jobject object;

    JkcContext *context;
    jfieldID sts;
    jfieldID nversion;

    bool in_use; // see Use
};

// Holds an object's record for one thing at a time: a judgement, a conversion or the release.
class Use {
public:
    // Throws IllegalStateException when the object is at work already.
    Use(JNIEnv *env, InfoRecord &info);
    ~Use();
    Use(const Use &) = delete;
    Use &operator=(const Use &) = delete;

    bool refused() const { return info_ == nullptr; }
    void forget() { info_ = nullptr; } // of a record that is freed

private:
    InfoRecord *info_;
};

// The field that holds the address of an object's record; null, with an exception pending, when its class has none.
jfieldID handle_field(JNIEnv *env, jobject self);

// The record of an object; null, with an exception pending, when it was never created or is released.
InfoRecord *info_of(JNIEnv *env, jobject self);

} // namespace jkc
