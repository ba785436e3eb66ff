// Exit codes, and the one form in which the program speaks on standard error.
#pragma once

#include <stdexcept>
#include <string>

namespace jkc::cli {

// A run over several files ends with the highest of their codes.
enum ExitCode {
    kDone = 0,
    kUndecidedOrLost = 1, // no single code type fits, the file is no text, or there were losses under --strict
    kUsage = 2,
    kInputOutput = 3,
};

// A file that cannot be read, converted or written; what() is the reason.
struct FileError : std::runtime_error {
    FileError(std::string file, const std::string &reason) : std::runtime_error(reason), name(std::move(file)) {}
    FileError(std::string file, int error);
    std::string name;
    int error_number = 0; // errno, if it is a reason of the system
};

// Writes the line "jkc: ABOUT: WHAT".
void say(const std::string &about, const std::string &what);
// The same without ABOUT.
void say(const std::string &what);

// Says why a file failed. Silent where the reader of the output went away, which is its right.
void tell(const FileError &error);

// Writes lines of a report.
void report_text(const std::string &lines);
// Where they go: standard output at first.
void report_to(int descriptor);

// What is said and reported.
struct Spoken {
    std::string messages;
    std::string report;
};
// Where all that goes instead; null: where it belongs.
void collect(Spoken *spoken);
// Writes what was collected.
void pass_on(const Spoken &spoken);

// Goes back to the start of a terminal's line and empties it.
constexpr const char *kWipeLine = "\r\033[K";

// Whether something may stand in the line to which the next message goes.
void wipe_line_before_messages(bool wipe);

} // namespace jkc::cli
