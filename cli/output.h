// Where the program's output goes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace jkc::cli {

// An open file descriptor that is written directly.
class Output {
public:
    // Standard output.
    Output();
    virtual ~Output();
    Output(const Output &) = delete;
    Output &operator=(const Output &) = delete;

    const std::string &name() const { return name_; }
    // How much was written so far.
    uint64_t length() const { return length_; }
    // The errno of the write that failed, after which nothing more can be written; else 0.
    int error() const { return error_; }

    // Writes everything or sets error(). Throws nothing, so that the library may call it.
    bool write(const void *data, size_t length) noexcept;
    // The same for text; throws FileError.
    void print(std::string_view text);
    // Makes the output final. Throws FileError. Without it, a SafeFile leaves no trace.
    virtual void commit();

protected:
    Output(std::string name, int descriptor) : name_(std::move(name)), descriptor_(descriptor) {}
    int descriptor() const { return descriptor_; }
    void set_descriptor(int descriptor) { descriptor_ = descriptor; }
    void close();
    friend std::unique_ptr<Output> open_output(const std::optional<std::string> &path);

private:
    std::string name_;
    int descriptor_;
    uint64_t length_ = 0;
    int error_ = 0;
};

// Opens what -o names: nothing or "-" is standard output; a regular or new file becomes a SafeFile; a
// device or pipe is written directly, and /dev/fd/N is the descriptor N itself. Throws FileError.
std::unique_ptr<Output> open_output(const std::optional<std::string> &path);

} // namespace jkc::cli
