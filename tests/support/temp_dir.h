// A directory for files, removed with all that is in it. Its name is not in ASCII, so that no path in it is.
#pragma once

#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <sstream>
#include <string>

namespace jkc::testing {

class TempDir {
public:
    TempDir() {
        std::random_device random;
        do {
            path_ = std::filesystem::temp_directory_path() / name_of("jkc-試験-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(path_));
        // For everyone: some tests give up the rights of root.
        std::filesystem::permissions(path_, std::filesystem::perms::all);
    }
    ~TempDir() { std::filesystem::remove_all(path_); }
    TempDir(const TempDir &) = delete;
    TempDir &operator=(const TempDir &) = delete;

    // Of a file in it, in UTF-8; a path from the root stays that.
    std::string path(const std::string &name) const { return text(path_ / name_of(name)); }
    // Answers the path.
    std::string write(const std::string &name, const std::string &bytes) const {
        std::ofstream(path_ / name_of(name), std::ios::binary) << bytes;
        return path(name);
    }
    // The regular files with their bytes.
    std::map<std::string, std::string> files() const {
        std::map<std::string, std::string> found;
        for (const auto &entry : std::filesystem::directory_iterator(path_)) {
            if (entry.is_regular_file()) {
                std::ostringstream bytes;
                bytes << std::ifstream(entry.path(), std::ios::binary).rdbuf();
                found[text(entry.path().filename())] = bytes.str();
            }
        }
        return found;
    }

private:
    static std::filesystem::path name_of(const std::string &utf8) { return std::u8string(utf8.begin(), utf8.end()); }
    static std::string text(const std::filesystem::path &path) {
        const std::u8string utf8 = path.u8string();
        return {utf8.begin(), utf8.end()};
    }

    std::filesystem::path path_;
};

} // namespace jkc::testing
