// What the program asks of the operating system. posix/ and windows/ each have all of it, and nothing else in the program
// tells systems apart.
//
// Names of files are bytes on POSIX systems; on Windows they are UTF-8, and / parts their folders, whatever the user
// wrote. What can fail answers false, -1 or nothing then, and errno tells why.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>

namespace jkc::cli {

constexpr int kStandardInput = 0;
constexpr int kStandardOutput = 1;
constexpr int kStandardError = 2;

struct FileTime {
    int64_t seconds;
    int64_t nanoseconds; // 0 to 999,999,999
    bool operator==(const FileTime &) const = default;
};

enum class FileKind { kRegular, kFolder, kOther };

struct FileStatus {
    FileKind kind;
    uint64_t volume; // this and the number are the same for all names of one file
    uint64_t number;
    uint64_t size;  // in bytes
    uint64_t links; // names of the file
    FileTime accessed;
    FileTime modified;
    FileTime changed; // of its attributes, too; 0 where the system does not tell
    uint32_t owner;   // this, the group and the mode are 0 on Windows
    uint32_t group;
    uint32_t mode;
};

inline bool is_same_file(const FileStatus &a, const FileStatus &b) {
    return a.volume == b.volume && a.number == b.number;
}

std::optional<FileStatus> status_of(const std::string &path);
std::optional<FileStatus> status_of(int descriptor);
// Of a symbolic link itself, which is of no kind that has a name.
std::optional<FileStatus> status_of_link(const std::string &path);

// What a symbolic link points to; nothing: it is none.
std::optional<std::string> link_target(const std::string &path);
// The full path without symbolic links.
std::optional<std::string> real_path(const std::string &path);
bool may_write(const std::string &path);

// Descriptors, for bytes as they are.
int open_to_read(const std::string &path);
int open_to_write(const std::string &path); // a device or a pipe
enum class Access { kOwner, kAsUsual };
int create_file(const std::string &path, Access access); // which must not be there; to be written and read
int open_temporary();                                    // without a name
// A new descriptor for the one that a name such as /dev/fd/3 means. Nothing: it is no such name.
std::optional<int> open_named_descriptor(const std::string &path);
bool close_descriptor(int descriptor);

// How many bytes, which may be fewer than there are; 0 is the end. They go on when a signal comes in between.
ptrdiff_t read_some(int descriptor, void *data, size_t room);
ptrdiff_t read_some_at(int descriptor, void *data, size_t room, uint64_t offset);
ptrdiff_t write_some(int descriptor, const void *data, size_t length);
// Where the descriptor stands in its file; -1 where it cannot be moved.
int64_t position_of(int descriptor);
// Waits until the file is on the disk; file systems that cannot do it are no failure.
bool sync_to_disk(int descriptor);
// Waits until the names in a folder are on the disk, as far as the system can tell; "" is the working one.
void sync_folder(const std::string &path);
// Null: the time stays.
bool set_times(int descriptor, const FileTime *accessed, const FileTime *modified);

bool make_folder(const std::string &path);
bool remove_file(const std::string &path);
// Gives a file the name of another one, which is there as it was or replaced at any moment.
bool replace_file(const std::string &from, const std::string &to);
// errno is ENOTSUP where the file system has none.
bool make_hard_link(const std::string &path, const std::string &link);
// What is in a folder, but . and ..
std::optional<std::set<std::string>> entries_of(const std::string &folder);

// A name of a file as the user wrote it, in the program's form.
std::string native_name(std::string name);
bool matches_pattern(const std::string &name, const std::string &pattern);
// How many bytes at the front are a printable character; 0: there is none.
size_t printable_length(const char *text, size_t length);
// Up to the last slash; empty where the system does not tell.
std::string folder_of_program();

bool is_terminal(int descriptor);
// Whether messages go to a terminal that can go back to the start of a line.
bool can_go_back();
size_t terminal_width(); // in columns

// Memory for zeros that all processes started later see, too; null: there is none.
void *share_memory(size_t size);
void release_memory(void *memory, size_t size);

// Called first: makes the standard descriptors safe to use, and the failures of writing ones that are told. Answers the
// arguments.
char **prepare_process(int &count, char **arguments);

} // namespace jkc::cli
