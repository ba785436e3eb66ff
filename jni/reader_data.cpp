#include "jni/reader_data.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>

jkc::ReaderData *_jni_info;

namespace jkc {

namespace {

constexpr jsize kTransferLength = 8192;

jmethodID method_of(JNIEnv *env, jobject object, const char *name, const char *type) {
    return env->GetMethodID(env->GetObjectClass(object), name, type);
}

int64_t read_stream(JkcReader *self, uint8_t *dst, size_t room) {
    const auto &data = *reinterpret_cast<ReaderData *>(self);
    JNIEnv *env = data.env;
    const jint wanted = static_cast<jint>(std::min(static_cast<size_t>(data.transfer_length), room));
    const jint count = env->CallIntMethod(data.stream, data.read_array, data.transfer, 0, wanted);
    if (env->ExceptionCheck() != JNI_FALSE) {
        env->ExceptionClear();
        return kReadFailed;
    }
    if (count > wanted) {
        return kReadFailed; // no stream can have put more than it was asked for
    }
    if (count > 0) {
        env->GetByteArrayRegion(data.transfer, 0, count, reinterpret_cast<jbyte *>(dst));
    }
    return count;
}

int32_t call_observer(ReaderData &call, int32_t code_type, jobject user) {
    const jint answer = call.env->CallIntMethod(call.observer, call.observe, code_type, user);
    call.threw = call.env->ExceptionCheck() != JNI_FALSE;
    return call.threw ? JKC_EWRITE : answer;
}

int32_t call_writer(ReaderData &call, const uint8_t *data, uint64_t length, jobject user) {
    JNIEnv *env = call.env;
    jint answer = JKC_SUCCESS;
    // The library may hand over one byte more than the array holds.
    while (length > 0 && answer == JKC_SUCCESS && !call.threw) {
        const auto part = static_cast<jsize>(std::min(length, static_cast<uint64_t>(call.transfer_length)));
        env->SetByteArrayRegion(call.transfer, 0, part, reinterpret_cast<const jbyte *>(data));
        answer = env->CallIntMethod(call.writer, call.write, call.transfer, part, user);
        call.threw = env->ExceptionCheck() != JNI_FALSE;
        data += part;
        length -= static_cast<uint64_t>(part);
    }
    return call.threw ? JKC_EWRITE : answer;
}

int32_t observe(int32_t code_type, void *user_data) {
    auto &call = *static_cast<ReaderData *>(user_data);
    return call_observer(call, code_type, call.user);
}

int32_t write(const uint8_t *data, uint64_t length, void *user_data) {
    auto &call = *static_cast<ReaderData *>(user_data);
    return call_writer(call, data, length, call.user);
}

} // namespace

RunningCall::RunningCall(JNIEnv *env, jobject self, const InfoRecord &info)
    : data_(static_cast<ReaderData *>(calloc(1, sizeof(ReaderData)))) {
    if (data_ != nullptr) {
        data_->reader.read = read_stream;
        data_->env = env;
        data_->object = self;
        data_->info = &info;
        info.context->reader = &data_->reader;
        std::atomic_ref(_jni_info).store(data_);
    }
}

RunningCall::~RunningCall() {
    if (data_ != nullptr) {
        ReaderData *own = data_;
        std::atomic_ref(_jni_info).compare_exchange_strong(own, nullptr);
        data_->info->context->reader = nullptr;
        free(data_);
    }
}

int RunningCall::take_array() {
    JNIEnv *env = data_->env;
    data_->transfer = env->NewByteArray(kTransferLength);
    if (data_->transfer == nullptr) {
        return JKC_EALLOC;
    }
    data_->transfer_length = env->GetArrayLength(data_->transfer);
    return JKC_SUCCESS;
}

int RunningCall::take_stream(jobject stream) {
    JNIEnv *env = data_->env;
    data_->stream = stream;
    data_->read_array = method_of(env, stream, "read", "([BII)I");
    if (data_->read_array == nullptr) {
        return JKC_EREAD;
    }
    data_->read_byte = method_of(env, stream, "read", "()I");
    if (data_->read_byte == nullptr) {
        env->ExceptionClear(); // the array form is all that is called
    }
    return JKC_SUCCESS;
}

int RunningCall::take_callbacks(jobject observer, jobject writer, jobject user) {
    JNIEnv *env = data_->env;
    data_->user = user;
    if (observer != nullptr) {
        data_->observer = observer;
        data_->observe = method_of(env, observer, "observe", "(ILjava/lang/Object;)I");
        if (data_->observe == nullptr) {
            return JKC_EWRITE;
        }
    }
    if (writer != nullptr) {
        data_->writer = writer;
        data_->write = method_of(env, writer, "write", "([BILjava/lang/Object;)I");
        if (data_->write == nullptr) {
            return JKC_EWRITE;
        }
    }
    return JKC_SUCCESS;
}

JkcObserver RunningCall::observer() const { return data_->observer != nullptr ? observe : nullptr; }
JkcWriter RunningCall::writer() const { return data_->writer != nullptr ? write : nullptr; }

} // namespace jkc

int32_t _jjkc_observer(int32_t code_type, void *user_data) {
    return jkc::call_observer(*_jni_info, code_type, static_cast<jobject>(user_data));
}

int32_t _jjkc_writer(const uint8_t *data, uint64_t length, void *user_data) {
    return jkc::call_writer(*_jni_info, data, length, static_cast<jobject>(user_data));
}
