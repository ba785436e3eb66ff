// Creation and release of the native side of a Java object.
#include "jni/info.h"

#include <atomic>
#include <cstdlib>

#include "jni/exceptions.h"
#include "kestro_jkc_Jkc.h"

namespace jkc {

namespace {

void set_handle(JNIEnv *env, jobject self, jfieldID handle, const InfoRecord *info) {
    env->SetLongField(self, handle, reinterpret_cast<jlong>(info));
}

void free_info(InfoRecord *info) {
    release_jkc(info->context);
    free(info);
}

// Looks up the fields that calls write to. False, with an exception pending, when the class lacks one.
bool find_fields(JNIEnv *env, InfoRecord &info) {
    info.sts = env->GetFieldID(info.cls, "sts", "I");
    if (info.sts == nullptr) {
        return false;
    }
    info.nversion = env->GetStaticFieldID(info.cls, "nversion", "F");
    return info.nversion != nullptr;
}

} // namespace

Use::Use(JNIEnv *env, InfoRecord &info) : info_(std::atomic_ref(info.in_use).exchange(true) ? nullptr : &info) {
    if (refused()) {
        throw_new(env, kIllegalState, "this object is running a judgement or conversion");
    }
}

Use::~Use() {
    if (!refused()) {
        std::atomic_ref(info_->in_use).store(false);
    }
}

jfieldID handle_field(JNIEnv *env, jobject self) {
    return env->GetFieldID(env->GetObjectClass(self), "_hjkcInfo", "J");
}

InfoRecord *info_of(JNIEnv *env, jobject self) {
    const jfieldID handle = handle_field(env, self);
    if (handle == nullptr) {
        return nullptr;
    }
    auto *info = reinterpret_cast<InfoRecord *>(env->GetLongField(self, handle));
    if (info == nullptr) {
        throw_new(env, kIllegalState, "this object was not created, or is released");
    }
    return info;
}

} // namespace jkc

jint Java_kestro_jkc_Jkc__1createJkc(JNIEnv *env, jobject self) {
    const jfieldID handle = jkc::handle_field(env, self);
    if (handle == nullptr) {
        return JKC_EALLOC;
    }
    env->SetLongField(self, handle, 0);
    JkcContext *context = create_jkc();
    if (context == nullptr) {
        return JKC_EALLOC;
    }
    auto *info = static_cast<jkc::InfoRecord *>(calloc(1, sizeof(jkc::InfoRecord)));
    if (info == nullptr) {
        release_jkc(context);
        return JKC_EALLOC;
    }
    jkc::set_handle(env, self, handle, info);
    *info = {env, env->GetObjectClass(self), self, context, nullptr, nullptr, false};
    if (!jkc::find_fields(env, *info)) {
        const jkc::ExceptionAside aside(env);
        jkc::set_handle(env, self, handle, nullptr);
        jkc::free_info(info);
        return JKC_EALLOC;
    }
    env->SetStaticFloatField(info->cls, info->nversion, context->version);
    env->SetIntField(self, info->sts, JKC_SUCCESS);
    return JKC_SUCCESS;
}

void Java_kestro_jkc_Jkc__1releaseJkc(JNIEnv *env, jobject self) {
    jkc::InfoRecord *info = jkc::info_of(env, self);
    if (info == nullptr) {
        return;
    }
    jkc::Use use(env, *info);
    if (!use.refused()) {
        jkc::set_handle(env, self, jkc::handle_field(env, self), nullptr);
        jkc::free_info(info);
        use.forget();
    }
}
