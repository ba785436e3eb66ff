#include "convert.h"

#include <algorithm>
#include <cerrno>
#include <memory>
#include <new>
#include <unordered_set>

#include "changed_file.h"
#include "conversion.h"
#include "each_file.h"
#include "file_list.h"
#include "outcomes.h"
#include "platform.h"
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
        : options_(options), list_(list), progress_(progress), replaces_(options.in_place || options.dry_run) {}

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
            say(signal_number != 0 ? tr("interrupted") : options_.dry_run ? tr("dry run") : tr("summary"), summary);
        }
        if (signal_number != 0) {
            end_by(signal_number);
        }
        return counts_.code();
    }

private:
    std::string destination(size_t i) const {
        const ListedFile &file = list_.files[i];
        return options_.output_dir + "/" + file.name.substr(file.base);
    }

    // Files of several folders can have one name below the folder for the results.
    void find_doubles() {
        std::unordered_set<std::string> seen;
        for (size_t i = 0; i < list_.files.size() && !replaces_; ++i) {
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
        FileReport report(options_, name);
        Outcome outcome = Outcome::kFailed;
        try {
            outcome = convert_or_throw(i, report);
        } catch (const FileError &error) {
            tell(error);
            report.give_reason(error.what());
        } catch (const std::bad_alloc &) {
            say(name, tr("out of memory"));
        }
        report_text(report.text(outcome));
        progress_.finish_file();
        return outcome;
    }

    // A file that has been replaced must be counted: from then on signals wait.
    template <typename LongWork>
    static auto in_window(LongWork work) {
        const SignalWindow window;
        return work();
    }

    Outcome convert_or_throw(size_t i, FileReport &report) {
        const std::string &name = list_.files[i].name;
        const std::string path = replaces_ ? name : destination(i);
        if (!replaces_) {
            check_destination(i, path);
        }
        const auto file = options_.in_place ? status_of(name) : std::nullopt;
        if (file && file->kind == FileKind::kOther) {
            throw FileError(name, tr("not a regular file")); // before anything is taken from it
        }
        Source source(name);
        FileConversion conversion(options_, source, report);
        Outcome outcome = Outcome::kFailed;
        if (!in_window([&] { return conversion.prepare(outcome); })) {
            return outcome;
        }
        return replaces_ ? replace(source, conversion) : write(source, conversion, path);
    }

    // Also a dry run compares each file with what would come of it.
    Outcome replace(Source &source, FileConversion &conversion) {
        ChangedFile file(source, options_.backup_suffix, options_.dry_run);
        const Outcome outcome = in_window([&] {
            return conversion.run(
                true, [&](std::string_view text) { file.print(text); }, progress_);
        });
        if (exit_code(outcome) != kDone) {
            return outcome;
        }
        if (!file.changes()) {
            return Outcome::kUnchanged;
        }
        file.commit(options_.keep_time);
        return outcome;
    }

    Outcome write(const Source &source, FileConversion &conversion, const std::string &path) {
        make_folders(path);
        SafeFile out(path);
        const Outcome outcome = in_window([&] {
            return conversion.run(
                true, [&](std::string_view text) { out.print(text); }, progress_);
        });
        if (exit_code(outcome) != kDone) {
            return outcome;
        }
        if (options_.keep_time) {
            out.set_time(source.status().modified);
        }
        out.commit();
        return outcome;
    }

    void check_destination(size_t i, const std::string &path) {
        const std::string &name = list_.files[i].name;
        if (doubles_.count(i) != 0) {
            throw FileError(name, format(tr("another file is converted to %s already"), shown(path).c_str()));
        }
        const auto from = status_of(name);
        if (!from) {
            throw FileError(name, errno);
        }
        const auto to = status_of(path);
        if (to && is_same_file(*from, *to)) {
            throw FileError(name, tr("would replace itself, for which there is --in-place"));
        }
    }

    // Those that lead to a path.
    static void make_folders(const std::string &path) {
        for (size_t slash = path.find('/', 1); slash != std::string::npos; slash = path.find('/', slash + 1)) {
            const std::string folder = path.substr(0, slash);
            if (!make_folder(folder) && errno != EEXIST) {
                throw FileError(folder, errno);
            }
        }
    }

    const Options &options_;
    const FileList &list_;
    Progress &progress_;
    bool replaces_; // or would; else each file goes below a folder
    OutcomeCounts counts_;
    std::unordered_set<size_t> doubles_; // those whose place another has taken
};

ExitCode convert_to_output(const Options &options, const FileList &list, Progress &progress) {
    const std::unique_ptr<Output> out = open_output(options.output);
    const ExitCode code = for_each_file(list, *out, [&](const std::string &name) {
        progress.begin_file(name);
        Source source(name);
        FileReport report(options, name);
        FileConversion conversion(options, source, report);
        Outcome outcome = Outcome::kFailed;
        if (conversion.prepare(outcome)) {
            // Files that are joined have one byte-order mark, at the front.
            const bool at_front = out->length() == 0;
            outcome = conversion.run(
                at_front, [&](std::string_view text) { out->print(text); }, progress);
        }
        report_text(report.text(outcome));
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
    const bool to_screen =
        !options.writes_each() && options.output.value_or("-") == "-" && is_terminal(kStandardOutput);
    return options.progress && !options.quiet && is_terminal(kStandardError) && !to_screen;
}

} // namespace

ExitCode convert(const Options &options) {
    // A report would stand among the text.
    const bool text_goes_out = !options.writes_each() && !options.dry_run && options.output.value_or("-") == "-";
    report_to(text_goes_out ? kStandardError : kStandardOutput);
    const FileList list = list_files(options);
    Progress progress(list, wants_bar(options));
    return options.writes_each() || options.dry_run ? EachFile(options, list, progress).run()
                                                    : convert_to_output(options, list, progress);
}

} // namespace jkc::cli
