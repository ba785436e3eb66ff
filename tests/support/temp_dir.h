// A directory for files, removed with all that is in it.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>

namespace jkc::testing {

class TempDir {
public:
    TempDir() {
        // For everyone: some tests give up the rights of root.
        std::filesystem::permissions(mkdtemp(path_.data()), std::filesystem::perms::all);
    }
    ~TempDir() { std::filesystem::remove_all(path_); }
    TempDir(const TempDir &) = delete;
    TempDir &operator=(const TempDir &) = delete;

    // Of a file in it; a path from the root stays that.
    std::string path(const std::string &name) const { return std::filesystem::path(path_) / name; }
    // Answers the path.
    std::string write(const std::string &name, const std::string &bytes) const {
        std::ofstream(path(name), std::ios::binary) << bytes;
        return path(name);
    }
    // The regular files with their bytes.
    std::map<std::string, std::string> files() const {
        std::map<std::string, std::string> found;
        for (const auto &entry : std::filesystem::directory_iterator(path_)) {
            if (entry.is_regular_file()) {
                std::ostringstream bytes;
                bytes << std::ifstream(entry.path(), std::ios::binary).rdbuf();
                found[entry.path().filename()] = bytes.str();
            }
        }
        return found;
    }

private:
    std::string path_ = "/tmp/jkc-test-XXXXXX";
};

} // namespace jkc::testing
