// File descriptors, read and written whole.
#pragma once

#include <cstddef>

#include "platform.h"

namespace jkc::cli {

// Closes its number; -1 is none.
class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0) {
            close_descriptor(number_);
        }
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    int number() const { return number_; }

private:
    int number_;
};

// Writes all of it. Answers how much was written; errno tells why it is less.
size_t write_all(int descriptor, const void *data, size_t length);

// Copies the rest of one file to the end of another. False when that fails, and errno tells why.
bool copy_content(int from, int to);

// Whether two files hold the same, byte for byte, from their begin on. Neither descriptor is moved.
bool same_content(int a, int b);

} // namespace jkc::cli
