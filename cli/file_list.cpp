#include "file_list.h"

#include <algorithm>
#include <cerrno>
#include <optional>
#include <set>
#include <string_view>

#include "platform.h"
#include "report.h"
#include "safe_file.h"
#include "source.h"

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
        return matches_pattern(name.substr(begin), glob);
    });
}

class Walk {
public:
    Walk(const Options &options, FileList &list)
        : options_(options), list_(list),
          results_(options.output_dir.empty() ? std::nullopt : status_of(options.output_dir)) {}

    void go_through(const std::string &folder, size_t base) {
        const std::optional<std::set<std::string>> entries = entries_of(folder);
        if (!entries) {
            tell(FileError(folder, errno));
            ++list_.failures;
            return;
        }
        for (const std::string &entry : *entries) {
            std::string name = folder;
            name.append(folder.back() == '/' ? "" : "/").append(entry);
            const auto file = status_of_link(name);
            if (!file && errno == EILSEQ) { // what is gone meanwhile is no failure, but this is there
                tell(FileError(name, errno));
                ++list_.failures;
            }
            if (!file || matches(options_.exclude, name, base)) {
                continue;
            }
            if (file->kind == FileKind::kFolder && !is_left_out(entry, *file)) {
                go_through(name, base);
            } else if (file->kind == FileKind::kRegular && is_wanted(name, entry, base)) {
                list_.files.push_back({name, base});
            }
        }
    }

private:
    bool is_left_out(const std::string &entry, const FileStatus &folder) const {
        return (results_ && is_same_file(folder, *results_)) ||
               std::find(std::begin(kVersionControl), std::end(kVersionControl), entry) != std::end(kVersionControl);
    }

    bool is_wanted(const std::string &name, const std::string &entry, size_t base) const {
        const bool is_backup = !options_.backup_suffix.empty() && ends_with(entry, options_.backup_suffix);
        return !is_backup && !begins_with(entry, kTemporaryPrefix) &&
               (options_.include.empty() || matches(options_.include, name, base));
    }

    const Options &options_;
    FileList &list_;
    std::optional<FileStatus> results_; // the folder for them
};

// Names of a list keep their folders, unless these lead out of the current one.
size_t base_in_list(const std::string &name) {
    const bool leads_out = begins_with(name, "/") || begins_with(name, "../") || name.find("/../") != std::string::npos;
    return leads_out ? base_of(name) : begins_with(name, "./") ? 2 : 0;
}

std::vector<std::string> read_names(const std::string &path, char end) {
    std::vector<std::string> names(1);
    Source(path).read_all([&](const uint8_t *data, size_t length) {
        for (size_t i = 0; i < length; ++i) {
            if (data[i] == static_cast<uint8_t>(end)) {
                names.emplace_back();
            } else {
                names.back() += static_cast<char>(data[i]);
            }
        }
    });
    names.erase(std::remove(names.begin(), names.end(), ""), names.end());
    return names;
}

} // namespace

FileList list_files(const Options &options) {
    FileList list;
    Walk walk(options, list);
    const auto add = [&](const std::string &name, size_t base) {
        const auto file = options.recursive && name != "-" ? status_of(name) : std::nullopt;
        if (file && file->kind == FileKind::kFolder) {
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
            const std::string path = name == "-" ? "./-" : native_name(name);
            add(path, base_in_list(path));
        }
    } else if (options.files.empty()) {
        add(options.recursive ? "." : "-", 0);
    }
    return list;
}

} // namespace jkc::cli
