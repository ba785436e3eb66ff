// The native methods of FedDetector.
#include "jkc/detector.h"
#include "jni/region.h"
#include "kestro_jkc_FedDetector.h"

namespace jkc {

namespace {

JkcDetector *detector_of(jlong handle) { return reinterpret_cast<JkcDetector *>(handle); }

} // namespace

} // namespace jkc

jlong Java_kestro_jkc_FedDetector_create(JNIEnv * /*env*/, jclass /*cls*/, jint preferred) {
    JkcDetectorOptions options = {};
    options.size = sizeof options;
    options.preferred = preferred;
    JkcDetector *detector = nullptr;
    const int32_t status = jkc_detector_create(&detector, &options);
    return status == JKC_SUCCESS ? reinterpret_cast<jlong>(detector) : status;
}

void Java_kestro_jkc_FedDetector_release(JNIEnv * /*env*/, jclass /*cls*/, jlong handle) {
    jkc_detector_release(jkc::detector_of(handle));
}

jboolean Java_kestro_jkc_FedDetector_feed(JNIEnv *env, jclass /*cls*/, jlong handle, jbyteArray data, jint from,
                                          jint length) {
    const jkc::Region bytes(env, data, nullptr);
    if (bytes.data() == nullptr) {
        return JNI_FALSE;
    }
    jkc_detector_feed(jkc::detector_of(handle), bytes.data() + from, static_cast<size_t>(length));
    return JNI_TRUE;
}

jintArray Java_kestro_jkc_FedDetector_finish(JNIEnv *env, jclass /*cls*/, jlong handle) {
    JkcDetection found = {};
    found.size = sizeof found;
    jkc_detector_finish(jkc::detector_of(handle), &found);
    const jint values[] = {found.decision,
                           found.open,
                           found.rule,
                           found.confidence,
                           found.srg_exists,
                           found.line_ends_bytes,
                           found.line_ends_utf16be,
                           found.line_ends_utf16le};
    constexpr jsize kValues = sizeof values / sizeof values[0];
    const jintArray told = env->NewIntArray(kValues);
    if (told != nullptr) {
        env->SetIntArrayRegion(told, 0, kValues, values);
    }
    return told;
}

jstring Java_kestro_jkc_FedDetector_ruleName(JNIEnv *env, jclass /*cls*/, jint rule) {
    return env->NewStringUTF(jkc_rule_name(rule));
}
