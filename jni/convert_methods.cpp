// convertBuffer, convertStream, convertFile.
#include "jni/arguments.h"
#include "jni/reader_data.h"
#include "jni/run.h"
#include "kestro_jkc_Jkc.h"

namespace jkc {

namespace {

// `convert_source` takes the context and the running call.
template <class Convert>
jint convert(JNIEnv *env, jobject self, jobject source, uint32_t source_bits, jobject observer, jobject writer,
             jobject user, Convert convert_source) {
    return run(env, self, source, source_bits, [&](const InfoRecord &info) -> jint {
        RunningCall call(env, self, info);
        if (call.out_of_memory()) {
            return JKC_EALLOC;
        }
        int status = call.take_array();
        if (status == JKC_SUCCESS) {
            status = call.take_callbacks(observer, writer, user);
        }
        if (status == JKC_SUCCESS) {
            status = convert_source(info.context, call);
        }
        // The answer of an observer that throws is what was judged, and that is 0 for empty input.
        return status == JKC_SUCCESS && call.threw() ? static_cast<jint>(JKC_EWRITE) : status;
    });
}

} // namespace

} // namespace jkc

jint Java_kestro_jkc_Jkc_convertBuffer(JNIEnv *env, jobject self, jbyteArray data, jint length, jint from, jint to,
                                       jboolean source_hint, jobject observer, jobject writer, jobject user) {
    return jkc::convert(
        env, self, data, jkc::kJavaBuffer, observer, writer, user, [=](JkcContext *ctx, jkc::RunningCall &call) -> int {
            const jkc::Bytes bytes(env, data);
            if (bytes.out_of_memory()) {
                return JKC_EALLOC;
            }
            return jkc_convert_buffer(ctx, reinterpret_cast<uint8_t *>(bytes.data()), bytes.clip(length), from, to,
                                      source_hint != JNI_FALSE, call.observer(), call.writer(), call.user_data());
        });
}

jint Java_kestro_jkc_Jkc_convertStream(JNIEnv *env, jobject self, jobject stream, jint from, jint to,
                                       jboolean source_hint, jobject observer, jobject writer, jobject user) {
    return jkc::convert(env, self, stream, jkc::kJavaStream, observer, writer, user,
                        [=](JkcContext *ctx, jkc::RunningCall &call) -> int {
                            const int status = call.take_stream(stream);
                            if (status != JKC_SUCCESS) {
                                return status;
                            }
                            return jkc_convert_stream(ctx, nullptr, from, to, source_hint != JNI_FALSE, call.observer(),
                                                      call.writer(), call.user_data());
                        });
}

jint Java_kestro_jkc_Jkc_convertFile(JNIEnv *env, jobject self, jbyteArray path, jint from, jint to,
                                     jboolean source_hint, jobject observer, jobject writer, jobject user) {
    return jkc::convert(env, self, path, jkc::kJavaFile, observer, writer, user,
                        [=](JkcContext *ctx, jkc::RunningCall &call) -> int {
                            const jkc::Path file(env, path);
                            return jkc_convert_file(ctx, file.text, from, to, source_hint != JNI_FALSE, call.observer(),
                                                    call.writer(), call.user_data());
                        });
}
