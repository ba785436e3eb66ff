// What it costs to start a program: CPU time of whole processes, medians.
//
//   jkc_start_up COMMAND...      each with its arguments behind blanks
#include <algorithm>
#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int kRounds = 301;

struct Command {
    explicit Command(const char *line) : name(line) {
        std::istringstream in(line);
        for (std::string word; in >> word;) {
            words.push_back(word);
        }
        for (std::string &word : words) {
            arguments.push_back(word.data());
        }
        arguments.push_back(nullptr);
    }

    const char *name;
    std::vector<std::string> words;
    std::vector<char *> arguments;
    std::vector<double> milliseconds;
};

double milliseconds_of(const timeval &time) {
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) * 1e-3;
}

// Runs the command with its output thrown away; returns whether all went well.
bool run(Command &command) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    const int failure =
        posix_spawnp(&child, command.arguments[0], &actions, nullptr, command.arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    rusage usage{};
    if (failure != 0 || wait4(child, &status, 0, &usage) != child || status != 0) {
        return false;
    }
    command.milliseconds.push_back(milliseconds_of(usage.ru_utime) + milliseconds_of(usage.ru_stime));
    return true;
}

} // namespace

int main(int argc, char **argv) {
    std::vector<Command> commands;
    commands.reserve(static_cast<size_t>(argc));
    for (int i = 1; i < argc; ++i) {
        commands.emplace_back(argv[i]);
    }
    // In turn, so that what disturbs one of them for a while disturbs them all.
    for (int round = 0; round < kRounds; ++round) {
        for (Command &command : commands) {
            if (!run(command)) {
                std::fprintf(stderr, "failed: %s\n", command.name);
                return 1;
            }
        }
    }
    for (Command &command : commands) {
        std::sort(command.milliseconds.begin(), command.milliseconds.end());
        std::printf("%6.2f ms  %s\n", command.milliseconds[kRounds / 2], command.name);
    }
    return 0;
}
