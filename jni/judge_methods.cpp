// judgesBuffer, judgesStream, judgesFile.
#include "jni/arguments.h"
#include "jni/reader_data.h"
#include "jni/run.h"
#include "kestro_jkc_Jkc.h"

namespace jkc {

namespace {

// `judge_source` takes the object's record and the places of the two answers.
template <class Judge>
jint judge(JNIEnv *env, jobject self, jobject source, uint32_t source_bits, jintArray type_out, jintArray line_out,
           Judge judge_source) {
    return run(env, self, source, source_bits, [&](const InfoRecord &info) -> jint {
        const Ints type(env, type_out);
        const Ints line(env, line_out);
        return type.out_of_memory() || line.out_of_memory() ? static_cast<jint>(JKC_EALLOC)
                                                            : judge_source(info, type.place(), line.place());
    });
}

} // namespace

} // namespace jkc

jint Java_kestro_jkc_Jkc_judgesBuffer(JNIEnv *env, jobject self, jintArray type_out, jintArray line_out,
                                      jbyteArray data, jint length, jint preferred) {
    return jkc::judge(env, self, data, jkc::kJavaBuffer, type_out, line_out,
                      [=](const jkc::InfoRecord &info, jint *type, jint *line) -> jint {
                          const jkc::Bytes bytes(env, data);
                          if (bytes.out_of_memory()) {
                              return JKC_EALLOC;
                          }
                          return jkc_judges_buffer(info.context, type, line, reinterpret_cast<char *>(bytes.data()),
                                                   bytes.clip(length), preferred);
                      });
}

jint Java_kestro_jkc_Jkc_judgesStream(JNIEnv *env, jobject self, jintArray type_out, jintArray line_out, jobject stream,
                                      jint preferred) {
    return jkc::judge(env, self, stream, jkc::kJavaStream, type_out, line_out,
                      [=](const jkc::InfoRecord &info, jint *type, jint *line) -> jint {
                          jkc::RunningCall call(env, self, info);
                          if (call.out_of_memory()) {
                              return JKC_TYPE_EMPTY; // nothing was read; conversions say EALLOC
                          }
                          int status = call.take_array();
                          if (status == JKC_SUCCESS) {
                              status = call.take_stream(stream);
                          }
                          return status != JKC_SUCCESS
                                     ? status
                                     : jkc_judges_stream(info.context, type, line, nullptr, preferred);
                      });
}

jint Java_kestro_jkc_Jkc_judgesFile(JNIEnv *env, jobject self, jintArray type_out, jintArray line_out, jbyteArray path,
                                    jint preferred) {
    return jkc::judge(env, self, path, jkc::kJavaFile, type_out, line_out,
                      [=](const jkc::InfoRecord &info, jint *type, jint *line) -> jint {
                          const jkc::Path file(env, path);
                          return jkc_judges_file(info.context, type, line, file.text, preferred);
                      });
}
