// The native methods of Codec.
#include <cstdlib>

#include "jni/codec.h"
#include "jni/region.h"
#include "kestro_jkc_Codec.h"

namespace jkc {

namespace {

Codec &codec_of(jlong handle) { return *reinterpret_cast<Codec *>(handle); }

} // namespace

} // namespace jkc

jlong Java_kestro_jkc_Codec_create(JNIEnv * /*env*/, jclass /*cls*/, jint code_type, jboolean encodes) {
    auto *codec = static_cast<jkc::Codec *>(calloc(1, sizeof(jkc::Codec)));
    if (codec != nullptr) {
        const int32_t utf16 = jkc::native_utf16();
        codec->init(encodes != JNI_FALSE ? utf16 : code_type, encodes != JNI_FALSE ? code_type : utf16);
    }
    return reinterpret_cast<jlong>(codec);
}

void Java_kestro_jkc_Codec_release(JNIEnv * /*env*/, jclass /*cls*/, jlong handle) { free(&jkc::codec_of(handle)); }

void Java_kestro_jkc_Codec_reset(JNIEnv * /*env*/, jclass /*cls*/, jlong handle) { jkc::codec_of(handle).reset(); }

jlong Java_kestro_jkc_Codec_run(JNIEnv *env, jclass /*cls*/, jlong handle, jobject in, jlong in_from, jint in_length,
                                jobject out, jlong out_from, jint out_length, jint flags) {
    using namespace jkc;
    void *const direct_in = direct_address(env, in, (flags & kInputIsDirect) != 0);
    void *const direct_out = direct_address(env, out, (flags & kOutputIsDirect) != 0);
    const Region input(env, in, direct_in);
    const Region output(env, out, direct_out);
    if (input.data() == nullptr || output.data() == nullptr) {
        return -1; // more than any call takes
    }
    const uint8_t *p = input.data() + in_from;
    uint8_t *o = output.data() + out_from;
    const uint8_t *const p_begin = p;
    uint8_t *const o_begin = o;
    Codec &codec = codec_of(handle);
    const Codec::Result result =
        (flags & kIsLast) != 0 ? codec.flush(o, o + out_length) : codec.run(p, p + in_length, o, o + out_length);
    return pack(result, static_cast<size_t>(p - p_begin), static_cast<size_t>(o - o_begin));
}

jint Java_kestro_jkc_Codec_lossLength(JNIEnv * /*env*/, jclass /*cls*/, jlong handle) {
    return static_cast<jint>(jkc::codec_of(handle).loss_length());
}
