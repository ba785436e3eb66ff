// How the commands with one output go through their files.
#pragma once

#include <algorithm>
#include <string>

#include "file_list.h"
#include "output.h"
#include "report.h"

namespace jkc::cli {

// Calls work(name) for each file. One that fails is told and does not keep the others from their turn,
// unless it is the output that broke. Answers the highest exit code.
template <typename Work>
ExitCode for_each_file(const FileList &list, const Output &output, Work work) {
    ExitCode worst = list.failures > 0 ? kInputOutput : kDone;
    for (const ListedFile &file : list.files) {
        try {
            worst = std::max(worst, work(file.name));
        } catch (const FileError &error) {
            tell(error);
            worst = kInputOutput;
            if (output.error() != 0) {
                break;
            }
        }
    }
    return worst;
}

} // namespace jkc::cli
