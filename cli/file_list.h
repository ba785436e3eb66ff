// Which files a command works on.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "options.h"

namespace jkc::cli {

struct ListedFile {
    std::string name;
    size_t base; // where in the name its path below the named folder begins; of a named file, its last part
};

struct FileList {
    std::vector<ListedFile> files;
    size_t failures = 0; // folders that could not be read, which was told
};

// The files of the command line, with -r those in its folders, and those of the list that --files-from names. Folders are
// gone through in the order of their names; of what is found there, files that are not regular, temporary files,
// backups and the folders of version control are passed over. Throws FileError when the list cannot be read.
FileList list_files(const Options &options);

} // namespace jkc::cli
