// The native methods of FedConverter.
#include <cstdlib>

#include "jni/fed_text.h"
#include "jni/region.h"
#include "kestro_jkc_FedConverter.h"

namespace jkc {

namespace {

FedText &text_of(jlong handle) { return *reinterpret_cast<FedText *>(handle); }

// What a loss is for Java: kind, offset, length, code, code point.
constexpr jsize kLossLongs = 5;
constexpr jsize kKeptLongs = kLossLongs + 2; // and line, column

void put_loss(jlong *to, const JkcLoss &loss) {
    to[0] = loss.kind;
    to[1] = static_cast<jlong>(loss.offset);
    to[2] = loss.length;
    to[3] = loss.code;
    to[4] = loss.code_point;
}

} // namespace

} // namespace jkc

jlong Java_kestro_jkc_FedConverter_create(JNIEnv * /*env*/, jclass /*cls*/, jint from, jint to, jint line_type,
                                          jint on_loss, jboolean geta, jboolean compose, jboolean suppress,
                                          jboolean jis_2004, jint keep) {
    JkcConverterOptions options = {};
    options.size = sizeof options;
    options.line_type = static_cast<uint32_t>(line_type);
    options.on_loss = static_cast<uint8_t>(on_loss);
    options.geta = geta;
    options.compose = compose;
    options.suppress = suppress;
    options.jis_2004 = jis_2004;
    auto *text = static_cast<jkc::FedText *>(calloc(1, sizeof(jkc::FedText)));
    if (text == nullptr) {
        return JKC_EALLOC;
    }
    const int32_t status = text->init(from, to, options, static_cast<size_t>(keep));
    if (status != JKC_SUCCESS) {
        text->destroy();
        free(text);
        return status;
    }
    return reinterpret_cast<jlong>(text);
}

void Java_kestro_jkc_FedConverter_release(JNIEnv * /*env*/, jclass /*cls*/, jlong handle) {
    jkc::FedText *text = &jkc::text_of(handle);
    text->destroy();
    free(text);
}

void Java_kestro_jkc_FedConverter_reset(JNIEnv * /*env*/, jclass /*cls*/, jlong handle) {
    jkc::text_of(handle).reset();
}

jlong Java_kestro_jkc_FedConverter_run(JNIEnv *env, jclass /*cls*/, jlong handle, jobject in, jlong in_from,
                                       jint in_length, jobject out, jlong out_from, jint out_length, jint flags) {
    using namespace jkc;
    const Region input(env, in, nullptr);
    const Region output(env, out, nullptr);
    if (input.data() == nullptr || output.data() == nullptr) {
        return pack(kFailed, 0, 0);
    }
    const uint8_t *p = input.data() + in_from;
    uint8_t *o = output.data() + out_from;
    const uint8_t *const p_begin = p;
    uint8_t *const o_begin = o;
    FedText &text = text_of(handle);
    const int32_t stop =
        text.run(p, static_cast<size_t>(in_length), o, static_cast<size_t>(out_length), (flags & kIsLast) != 0);
    const bool goes_on = stop >= JKC_STOP_END && stop <= JKC_STOP_OUTPUT;
    return pack(goes_on ? stop : kFailed, static_cast<size_t>(p - p_begin), static_cast<size_t>(o - o_begin));
}

jint Java_kestro_jkc_FedConverter_status(JNIEnv * /*env*/, jclass /*cls*/, jlong handle) {
    return jkc::text_of(handle).status();
}

jlongArray Java_kestro_jkc_FedConverter_losses(JNIEnv *env, jclass /*cls*/, jlong handle) {
    using namespace jkc;
    const FedText &text = text_of(handle);
    const JkcConverterLosses losses = text.losses();
    jlong front[1 + 2 * kLossLongs];
    front[0] = static_cast<jlong>(losses.ill_formed + losses.unmappable + losses.truncated);
    put_loss(front + 1, losses.first);
    put_loss(front + 1 + kLossLongs, losses.last);
    constexpr jsize kFront = sizeof front / sizeof front[0];
    const auto kept = static_cast<jsize>(text.kept_count());
    const jlongArray told = env->NewLongArray(kFront + kept * kKeptLongs);
    if (told == nullptr) {
        return nullptr; // with an exception pending
    }
    env->SetLongArrayRegion(told, 0, kFront, front);
    for (jsize i = 0; i < kept; ++i) {
        const KeptLoss &loss = text.kept()[i];
        jlong row[kKeptLongs];
        put_loss(row, loss.loss);
        row[kLossLongs] = loss.place.line;
        row[kLossLongs + 1] = loss.place.column;
        env->SetLongArrayRegion(told, kFront + i * kKeptLongs, kKeptLongs, row);
    }
    return told;
}
