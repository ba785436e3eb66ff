#include "convert.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <new>
#include <unordered_set>

#include "conversion.h"
#include "each_file.h"
#include "file_list.h"
#include "outcomes.h"
#include "progress.h"
#include "quoting.h"
#include "safe_file.h"
#include "signals.h"
#include "translate.h"
#include "workers.h"

namespace jkc::cli {
namespace {

// Files that are each written to one of their own.
class EachFile {
public:
    EachFile(const Options &options, const FileList &list, Progress &progress)
        : options_(options), list_(list), progress_(progress) {}

    ExitCode run() {
        for (size_t i = 0; i < list_.failures; ++i) {
            counts_.add(Outcome::kFailed);
        }
        int signal_number = 0;
        if (list_.files.size() == 1) {
            counts_.add(convert(0));
        } else {
            find_doubles();
            signal_number = do_work({.count = list_.files.size(),
                                     .jobs = options_.jobs,
                                     .work = [this](size_t i) { return static_cast<int>(convert(i)); },
                                     .done = [this](size_t i, int answer) { take(i, answer); },
                                     .tick = [this] { progress_.draw(); }});
        }
        const size_t count = list_.files.size() + list_.failures;
        if (count != 1 && (!options_.quiet || signal_number != 0)) {
            const std::string summary = counts_.summary(count);
            say(signal_number != 0 ? tr("interrupted") : tr("summary"), summary);
        }
        if (signal_number != 0) {
            end_by(signal_number);
        }
        return counts_.code();
    }

private:
    std::string destination(size_t i) const {
        const ListedFile &file = list_.files[i];
        return options_.in_place ? file.name : options_.output_dir + "/" + file.name.substr(file.base);
    }

    // Files of several folders can have one name below the folder for the results.
    void find_doubles() {
        std::unordered_set<std::string> seen;
        for (size_t i = 0; i < list_.files.size() && !options_.in_place; ++i) {
            if (!seen.insert(destination(i)).second) {
                doubles_.insert(i);
            }
        }
    }

    void take(size_t i, int answer) {
        if (answer == kEndedBySignal) {
            say(list_.files[i].name, tr("its process was ended by a signal"));
        }
        counts_.add(answer == kEndedBySignal ? Outcome::kFailed : static_cast<Outcome>(answer));
    }

    Outcome convert(size_t i) {
        const std::string &name = list_.files[i].name;
        progress_.begin_file(name);
        Outcome outcome = Outcome::kFailed;
        try {
            outcome = options_.in_place ? convert_in_place(name) : convert_to_folder(i);
        } catch (const FileError &error) {
            tell(error);
        } catch (const std::bad_alloc &) {
            say(name, tr("out of memory"));
        }
        progress_.finish_file();
        return outcome;
    }

    Outcome convert_in_place(const std::string &name) {
        SafeFile out(name, options_.backup_suffix);
        return convert_to(out, name, true);
    }

    Outcome convert_to_folder(size_t i) {
        const std::string &name = list_.files[i].name;
        const std::string path = destination(i);
        if (doubles_.count(i) != 0) {
            throw FileError(name, format(tr("another file is converted to %s already"), shown(path).c_str()));
        }
        struct stat from {};
        struct stat to {};
        if (stat(name.c_str(), &from) != 0) {
            throw FileError(name, errno);
        }
        if (stat(path.c_str(), &to) == 0 && from.st_dev == to.st_dev && from.st_ino == to.st_ino) {
            throw FileError(name, tr("would replace itself, for which there is --in-place"));
        }
        // Nothing is made for a name that cannot be read.
        if (S_ISDIR(from.st_mode)) {
            throw FileError(name, EISDIR);
        }
        make_folders(path);
        SafeFile out(path);
        return convert_to(out, name, false);
    }

    // Those that lead to a path.
    static void make_folders(const std::string &path) {
        for (size_t slash = path.find('/', 1); slash != std::string::npos; slash = path.find('/', slash + 1)) {
            const std::string folder = path.substr(0, slash);
            if (mkdir(folder.c_str(), 0777) != 0 && errno != EEXIST) {
                throw FileError(folder, errno);
            }
        }
    }

    Outcome convert_to(SafeFile &out, const std::string &name, bool is_same_file) {
        struct stat file {};
        if (options_.keep_time && stat(name.c_str(), &file) == 0) {
            out.set_time(file.st_mtim);
        }
        Outcome outcome = Outcome::kFailed;
        {
            const SignalWindow window;
            const Input in(name);
            outcome = convert_text(options_, in, out, progress_);
        }
        if (exit_code(outcome) != kDone) {
            return outcome;
        }
        const bool unchanged = out.holds_the_same_as(name);
        if (!unchanged || !is_same_file) {
            out.commit();
        }
        return unchanged ? Outcome::kUnchanged : outcome;
    }

    const Options &options_;
    const FileList &list_;
    Progress &progress_;
    OutcomeCounts counts_;
    std::unordered_set<size_t> doubles_; // those whose place another has taken
};

ExitCode convert_to_output(const Options &options, const FileList &list, Progress &progress) {
    const std::unique_ptr<Output> out = open_output(options.output);
    const ExitCode code = for_each_file(list, *out, [&](const std::string &name) {
        progress.begin_file(name);
        const Input in(name);
        const Outcome outcome = convert_text(options, in, *out, progress);
        progress.finish_file();
        return exit_code(outcome);
    });
    if (code == kDone) {
        out->commit();
    }
    return code;
}

// A bar would stand among the text that is written to the screen.
bool wants_bar(const Options &options) {
    const bool to_screen = !options.writes_each() && options.output.value_or("-") == "-" && isatty(STDOUT_FILENO) != 0;
    return options.progress && !options.quiet && isatty(STDERR_FILENO) != 0 && !to_screen;
}

} // namespace

ExitCode convert(const Options &options) {
    const FileList list = list_files(options);
    Progress progress(list, wants_bar(options));
    return options.writes_each() ? EachFile(options, list, progress).run() : convert_to_output(options, list, progress);
}

} // namespace jkc::cli
