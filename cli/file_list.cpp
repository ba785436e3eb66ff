#include "file_list.h"

#include <dirent.h>
#include <fcntl.h>
#include <fnmatch.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <set>
#include <string_view>

#include "report.h"
#include "safe_file.h"

namespace jkc::cli {
namespace {

constexpr std::string_view kVersionControl[] = {".git", ".hg", ".svn", ".bzr", "CVS"};

size_t base_of(const std::string &name) { return name.rfind('/') + 1; }

bool begins_with(std::string_view text, std::string_view begin) { return text.substr(0, begin.size()) == begin; }

bool ends_with(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

// A pattern with a slash is for the path below the named folder, another for the last part.
bool matches(const std::vector<std::string> &globs, const std::string &name, size_t base) {
    return std::any_of(globs.begin(), globs.end(), [&](const std::string &glob) {
        const size_t begin = glob.find('/') == std::string::npos ? base_of(name) : base;
        return fnmatch(glob.c_str(), name.c_str() + begin, 0) == 0;
    });
}

class Walk {
public:
    Walk(const Options &options, FileList &list) : options_(options), list_(list) {
        if (!options.output_dir.empty() && stat(options.output_dir.c_str(), &results_) == 0) {
            has_results_ = true;
        }
    }

    void go_through(const std::string &folder, size_t base) {
        const std::optional<std::set<std::string>> entries = read_folder(folder);
        if (!entries) {
            ++list_.failures;
            return;
        }
        for (const std::string &entry : *entries) {
            std::string name = folder;
            name.append(folder.back() == '/' ? "" : "/").append(entry);
            struct stat file {};
            if (lstat(name.c_str(), &file) != 0 || matches(options_.exclude, name, base)) {
                continue;
            }
            if (S_ISDIR(file.st_mode) && !is_left_out(entry, file)) {
                go_through(name, base);
            } else if (S_ISREG(file.st_mode) && is_wanted(name, entry, base)) {
                list_.files.push_back({name, base});
            }
        }
    }

private:
    static std::optional<std::set<std::string>> read_folder(const std::string &folder) {
        const std::unique_ptr<DIR, int (*)(DIR *)> open(opendir(folder.c_str()), closedir);
        std::set<std::string> entries;
        if (open) {
            errno = 0;
            while (const dirent *entry = readdir(open.get())) {
                entries.insert(entry->d_name);
            }
        }
        if (!open || errno != 0) {
            tell(FileError(folder, errno));
            return std::nullopt;
        }
        entries.erase(".");
        entries.erase("..");
        return entries;
    }

    bool is_left_out(const std::string &entry, const struct stat &folder) const {
        const bool is_results = has_results_ && folder.st_dev == results_.st_dev && folder.st_ino == results_.st_ino;
        return is_results ||
               std::find(std::begin(kVersionControl), std::end(kVersionControl), entry) != std::end(kVersionControl);
    }

    bool is_wanted(const std::string &name, const std::string &entry, size_t base) const {
        const bool is_backup = !options_.backup_suffix.empty() && ends_with(entry, options_.backup_suffix);
        return !is_backup && !begins_with(entry, kTemporaryPrefix) &&
               (options_.include.empty() || matches(options_.include, name, base));
    }

    const Options &options_;
    FileList &list_;
    struct stat results_ {};
    bool has_results_ = false;
};

// Names of a list keep their folders, unless these lead out of the current one.
size_t base_in_list(const std::string &name) {
    const bool leads_out = begins_with(name, "/") || begins_with(name, "../") || name.find("/../") != std::string::npos;
    return leads_out ? base_of(name) : begins_with(name, "./") ? 2 : 0;
}

std::vector<std::string> read_names(const std::string &path, char end) {
    const auto close = [](FILE *stream) { return stream == stdin ? 0 : std::fclose(stream); };
    const std::unique_ptr<FILE, int (*)(FILE *)> stream(path == "-" ? stdin : std::fopen(path.c_str(), "rbe"), close);
    if (!stream) {
        throw FileError(path, errno);
    }
    std::vector<std::string> names;
    char *line = nullptr;
    size_t room = 0;
    errno = 0;
    for (ssize_t length = 0; (length = getdelim(&line, &room, end, stream.get())) >= 0;) {
        std::string name(line, static_cast<size_t>(length));
        if (!name.empty() && name.back() == end) {
            name.pop_back();
        }
        if (!name.empty()) {
            names.push_back(name);
        }
    }
    const int error = std::ferror(stream.get()) != 0 ? errno : 0;
    std::free(line);
    if (error != 0) {
        throw FileError(path, error);
    }
    return names;
}

} // namespace

FileList list_files(const Options &options) {
    FileList list;
    Walk walk(options, list);
    const auto add = [&](const std::string &name, size_t base) {
        struct stat file {};
        if (options.recursive && name != "-" && stat(name.c_str(), &file) == 0 && S_ISDIR(file.st_mode)) {
            walk.go_through(name, name.size() + (ends_with(name, "/") ? 0 : 1));
        } else {
            list.files.push_back({name, base});
        }
    };
    for (const std::string &name : options.files) {
        add(name, base_of(name));
    }
    if (!options.files_from.empty()) {
        for (const std::string &name : read_names(options.files_from, options.null_names ? '\0' : '\n')) {
            // In a list "-" is a file.
            const std::string path = name == "-" ? "./-" : name;
            add(path, base_in_list(path));
        }
    } else if (options.files.empty()) {
        add(options.recursive ? "." : "-", 0);
    }
    return list;
}

} // namespace jkc::cli
