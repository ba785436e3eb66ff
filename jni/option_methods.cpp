// The methods that read or set one thing.
#include "jni/info.h"
#include "kestro_jkc_Jkc.h"

namespace jkc {

namespace {

// What `use` makes of the object's context; for an object without one, zero of the same type beside an exception.
template <class Use>
auto with_context(JNIEnv *env, jobject self, Use use) {
    const InfoRecord *info = info_of(env, self);
    return info != nullptr ? use(*info->context) : decltype(use(*info->context))();
}

jboolean to_java(bool value) { return value ? JNI_TRUE : JNI_FALSE; }
uint8_t from_java(jboolean value) { return value != JNI_FALSE ? 1 : 0; }

jint line_type(const JkcContext &ctx) { return static_cast<jint>(ctx.mode & JKC_MODE_LINE_TYPE); }

bool maps_euc(const JkcContext &ctx, jlong code) {
    constexpr uint64_t kThreeByte = 0x8F0000; // SS3, which begins a three-byte code
    if (code < 0) {
        return false;
    }
    const auto index = static_cast<uint64_t>(code);
    if (index < ctx.euc_src_count) {
        return ctx.euc_src_table[index] != 0;
    }
    const uint64_t low = index & 0xFFFF;
    return (index & kThreeByte) == kThreeByte && low < ctx.euc_src_count_8f && ctx.euc_src_table_8f[low] != 0;
}

} // namespace

} // namespace jkc

using jkc::with_context;

jint Java_kestro_jkc_Jkc_cmpBom(JNIEnv *env, jobject self, jint a, jint b) {
    return with_context(env, self, [=](const JkcContext &) { return jkc_cmp_bom(a, b); });
}

jfloat Java_kestro_jkc_Jkc_getVersion(JNIEnv *env, jobject self) {
    return with_context(env, self, [](const JkcContext &) { return jkc_get_version(); });
}

jint Java_kestro_jkc_Jkc_getLtype(JNIEnv *env, jobject self) { return with_context(env, self, jkc::line_type); }

jint Java_kestro_jkc_Jkc_setLtype(JNIEnv *env, jobject self, jint type) {
    return with_context(env, self, [=](JkcContext &ctx) {
        if (type == JKC_LINE_KEEP || type == JKC_LINE_LF || type == JKC_LINE_CR || type == JKC_LINE_CRLF) {
            ctx.mode = (ctx.mode & ~static_cast<uint32_t>(JKC_MODE_LINE_TYPE)) | static_cast<uint32_t>(type);
        }
        return jkc::line_type(ctx);
    });
}

jboolean Java_kestro_jkc_Jkc_isSuppress(JNIEnv *env, jobject self) {
    return with_context(env, self, [](const JkcContext &ctx) { return jkc::to_java(ctx.suppress != 0); });
}

void Java_kestro_jkc_Jkc_setSuppress(JNIEnv *env, jobject self, jboolean value) {
    with_context(env, self, [=](JkcContext &ctx) { ctx.suppress = jkc::from_java(value); });
}

jboolean Java_kestro_jkc_Jkc_isUtfmacTo(JNIEnv *env, jobject self) {
    return with_context(env, self, [](const JkcContext &ctx) { return jkc::to_java(ctx.utfmac_to != 0); });
}

void Java_kestro_jkc_Jkc_setUtfmacTo(JNIEnv *env, jobject self, jboolean value) {
    with_context(env, self, [=](JkcContext &ctx) { ctx.utfmac_to = jkc::from_java(value); });
}

jboolean Java_kestro_jkc_Jkc_utfmacExists(JNIEnv *env, jobject self) {
    return with_context(env, self, [](const JkcContext &ctx) { return jkc::to_java(ctx.utfmac_exists != 0); });
}

jint Java_kestro_jkc_Jkc_getNoCharCount(JNIEnv *env, jobject self) {
    return with_context(env, self, [](const JkcContext &ctx) { return static_cast<jint>(ctx.nochar_count); });
}

// Positions beyond 2 GB wrap: the Java side has them as int.
jint Java_kestro_jkc_Jkc_getFirstNoCharIndex(JNIEnv *env, jobject self) {
    return with_context(env, self, [](const JkcContext &ctx) { return static_cast<jint>(ctx.first_nochar_index); });
}

jint Java_kestro_jkc_Jkc_getLastNoCharIndex(JNIEnv *env, jobject self) {
    return with_context(env, self, [](const JkcContext &ctx) { return static_cast<jint>(ctx.last_nochar_index); });
}

jlong Java_kestro_jkc_Jkc_getFirstNoChar(JNIEnv *env, jobject self) {
    return with_context(env, self, [](const JkcContext &ctx) { return static_cast<jlong>(ctx.first_nochar); });
}

jlong Java_kestro_jkc_Jkc_getLastNoChar(JNIEnv *env, jobject self) {
    return with_context(env, self, [](const JkcContext &ctx) { return static_cast<jlong>(ctx.last_nochar); });
}

jboolean Java_kestro_jkc_Jkc_isEucLong(JNIEnv *env, jobject self, jlong code) {
    return with_context(env, self, [=](const JkcContext &ctx) { return jkc::to_java(jkc::maps_euc(ctx, code)); });
}
