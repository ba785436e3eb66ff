// The Java objects that a running call reads from and calls back.
#pragma once

#include "jni/info.h"
#include "judge/input/foreign_source.h"

namespace jkc {

struct ReaderData {
    JkcReader reader; // first: JkcContext::reader points at it
    JNIEnv *env;
    jobject object;
    const InfoRecord *info;
    jbyteArray transfer; // in which bytes pass between Java and the library
    jsize transfer_length;

    jobject stream;
    jmethodID read_array;
    jmethodID read_byte;
    jobject observer;
    jmethodID observe;
    jobject writer;
    jmethodID write;
    jobject user;
    bool threw; // the observer or the writer; nothing is called any more
};

// The reader data of one call, known to the context as long as it lives.
class RunningCall {
public:
    RunningCall(JNIEnv *env, jobject self, const InfoRecord &info);
    ~RunningCall();
    RunningCall(const RunningCall &) = delete;
    RunningCall &operator=(const RunningCall &) = delete;

    bool out_of_memory() const { return data_ == nullptr; }
    bool threw() const { return data_->threw; }

    // Prepares the array and looks up the methods of the objects; a null observer or writer has none. SUCCESS, or a
    // status with an exception pending.
    int take_array();
    int take_stream(jobject stream);
    int take_callbacks(jobject observer, jobject writer, jobject user);

    // What the library is given; null without an observer or writer.
    JkcObserver observer() const;
    JkcWriter writer() const;
    void *user_data() const { return data_; }

private:
    ReaderData *data_;
};

} // namespace jkc

extern "C" {

// The call that began last, of all in the process; null once it has ended.
JNIEXPORT extern jkc::ReaderData *_jni_info;

// Call the observer and the writer of that call back, with any Java object as user data.
JNIEXPORT int32_t _jjkc_observer(int32_t code_type, void *user_data);
JNIEXPORT int32_t _jjkc_writer(const uint8_t *data, uint64_t length, void *user_data);
}
