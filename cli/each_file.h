// How every command goes through its files.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "output.h"
#include "report.h"

namespace jkc::cli {

// Calls work(name) for each file. One that fails is told and does not keep the others from their turn,
// unless it is the output that broke. Answers the highest exit code.
template <typename Work>
ExitCode for_each_file(const std::vector<std::string> &names, const Output *output, Work work) {
    ExitCode worst = kDone;
    for (const std::string &name : names) {
        try {
            worst = std::max(worst, work(name));
        } catch (const FileError &error) {
            say(error.name, error.what());
            worst = kInputOutput;
            if (output != nullptr && output->error() != 0) {
                break;
            }
        }
    }
    return worst;
}

} // namespace jkc::cli
