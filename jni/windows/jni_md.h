/* What jni.h leaves to the platform, for Windows: a JDK for Linux has that of Linux only. */
#ifndef JKC_JNI_WINDOWS_JNI_MD_H
#define JKC_JNI_WINDOWS_JNI_MD_H

#define JNIEXPORT __declspec(dllexport)
#define JNIIMPORT __declspec(dllimport)
#define JNICALL __stdcall

typedef int jint;
typedef long long jlong;
typedef signed char jbyte;

#endif
