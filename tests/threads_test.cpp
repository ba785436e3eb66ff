// Calls in many threads, and inside each other's callbacks, do and answer what they would alone.
#include <algorithm>
#include <atomic>
#include <functional>
#include <memory>
#include <set>
#include <sstream>
#include <thread>

#include <gtest/gtest.h>

#include "core/internal.h"
#include "support/collecting_writer.h"
#include "support/temp_dir.h"

namespace jkc::testing {
namespace {

constexpr size_t kThreads = 8;
constexpr size_t kDepth = 4; // calls in a callback in a callback ...
constexpr size_t kSeveralPieces = 20000;

using Inside = std::function<void()>;

// A call and what it answers alone. It runs `inside` in one of its callbacks, if it has any.
struct Job {
    std::function<std::string(const Inside &inside)> run;
    std::string alone;
};

const TempDir &dir() {
    static const TempDir made;
    return made;
}

struct Context : std::unique_ptr<JkcContext, void (*)(JkcContext *)> {
    Context() : unique_ptr(create_jkc(), release_jkc) {}
};

// A text, from and to which code type, how.
struct Route {
    int src, dst;
    std::string text, path;
    size_t number;
};

struct Session {
    const Inside &inside;
    size_t inside_at; // the observer's call is 0
    size_t calls;
    std::ostringstream seen;

    // Afterwards what the call was handed must be as it was.
    static std::ostream &step(void *self) {
        auto *session = static_cast<Session *>(self);
        if (session->calls++ == session->inside_at) {
            session->inside();
        }
        return session->seen;
    }
    static int32_t observe(int32_t code_type, void *self) {
        step(self) << "told " << code_type << ": ";
        return 0;
    }
    static int32_t write(const uint8_t *data, uint64_t length, void *self) {
        step(self) << std::string_view(reinterpret_cast<const char *>(data), static_cast<size_t>(length));
        return 0;
    }
};

const uint8_t *bytes(const std::string &text) { return reinterpret_cast<const uint8_t *>(text.data()); }

std::string convert(const Route &route, const Inside &inside) {
    const auto &[src, dst, text, path, number] = route;
    const Context ctx;
    ctx->mode = static_cast<uint32_t>(number % 5);
    ctx->suppress = number % 7 == 0 ? 1 : 0;
    ctx->utfmac_to = number % 2 != 0 ? 1 : 0;
    Session session{inside, number % 3, 0, {}};
    session.seen << (number % 4 == 0 ? jkc_convert_file(ctx.get(), path.c_str(), src, dst, true, Session::observe,
                                                        Session::write, &session)
                                     : jkc_convert_buffer(ctx.get(), bytes(text), text.size(), src, dst, true,
                                                          Session::observe, Session::write, &session))
                 << ' ' << ctx->nochar_count << ' ' << ctx->first_nochar << ' ' << ctx->last_nochar_index;
    return session.seen.str();
}

// With a converter that is fed.
std::string feed(const Route &route, const Inside &inside) {
    constexpr size_t kPiece = 977;
    Session session{inside, route.number % 3, 0, {}};
    JkcConverter *converter = nullptr;
    int32_t status = jkc_converter_create(&converter, route.src, route.dst, nullptr);
    for (size_t at = 0; at < route.text.size() && status == 0; at += kPiece) {
        status = jkc_converter_feed(converter, bytes(route.text) + at, std::min(kPiece, route.text.size() - at),
                                    Session::write, &session);
    }
    session.seen << status << (status == 0 ? jkc_converter_finish(converter, Session::write, &session) : 0);
    jkc_converter_release(converter);
    return session.seen.str();
}

// With a detector that is fed.
std::string detect(const Route &route) {
    constexpr size_t kPiece = 977;
    JkcDetector *detector = nullptr;
    EXPECT_EQ(jkc_detector_create(&detector, nullptr), JKC_SUCCESS);
    for (size_t at = 0; at < route.text.size(); at += kPiece) {
        jkc_detector_feed(detector, bytes(route.text) + at, std::min(kPiece, route.text.size() - at));
    }
    JkcDetection found = {};
    found.size = sizeof found;
    jkc_detector_finish(detector, &found);
    jkc_detector_release(detector);
    return {reinterpret_cast<const char *>(&found), sizeof found};
}

std::string judge(const Case &c) {
    int type = 0;
    int line = 0;
    const int judged = jkc_judges_buffer(Context().get(), &type, c.options.has("eol") ? &line : nullptr, c.input.data(),
                                         c.input.size(), static_cast<int>(c.options.number("preferred")));
    return std::to_string(judged) + " " + std::to_string(type) + " " + std::to_string(line);
}

// Lines of two slots at once: as they are, and converted.
std::string read_slots(const Route &route) {
    std::ostringstream seen;
    int64_t slots[2] = {};
    for (const int i : {0, 1}) {
        uint64_t judged = 0;
        slots[i] = jkc_io_open(route.path.c_str(), 0, route.src, i == 0 ? route.src : route.dst, 1, &judged);
        seen << judged << ' ' << (slots[i] < 0 ? slots[i] : jkc_io_get_size(slots[i])) << ": ";
    }
    for (const int64_t slot : slots) {
        char line[500];
        uint64_t length = 0;
        for (int64_t count = 0; (count = jkc_io_get_line(slot, line, sizeof line, &length)) >= 0 && length > 0;) {
            seen << std::string_view(line, static_cast<size_t>(length)) << '=' << count << '/';
        }
        seen << jkc_io_get_stype(slot) << jkc_io_close(slot);
    }
    EXPECT_LE(jkc_io_is_decided(), 1);
    return seen.str();
}

std::string convert_into_file(const Route &route) {
    static std::atomic<int> files;
    const std::string destination = dir().path("destination" + std::to_string(files++));
    std::ostringstream seen;
    seen << jkc_io_convert_file(route.path.c_str(), route.src, destination.c_str(), route.dst, 1) << ' '
         << std::ifstream(destination, std::ios::binary).rdbuf();
    EXPECT_LE(jkc_io_get_ope_type(), JKC_OPERATION_CONVERT);
    std::filesystem::remove(destination);
    return seen.str();
}

std::string messages() {
    const Context ctx;
    std::string all;
    for (const int type : {JKC_TYPE_JIS, JKC_TYPE_SJIS, JKC_TYPE_EUC}) {
        for (int number = -24; number < 40; number++) {
            char text[300];
            all.append(text, jkc_statusto_message(ctx.get(), text, number, type));
            all.append(text, jkc_get_strerror(ctx.get(), number, text, 30, type));
        }
        std::string cut = parse_bytes("E38182*90");
        all.append(cut, 0, static_cast<size_t>(_convert_buf(ctx.get(), cut.data(), cut.size(), type)));
    }
    return all;
}

// From every code type to every one.
std::vector<Route> make_routes() {
    std::vector<Route> routes;
    for (int src = JKC_TYPE_ASCII; src <= JKC_TYPE_UTF8_BOM; src++) {
        std::string text = "plain text\r\n";
        if (src != JKC_TYPE_ASCII) {
            text += "日本語の文章を読みます。\nabc ｱｲｳ アイウ か\u3099 ～ ① № é\r漢字かな交じり文\n";
        }
        if (src == JKC_TYPE_JIS2004 || src == JKC_TYPE_UTF8) {
            text += "\u4FF1 𠮟 가\n";
        }
        while (text.size() < kSeveralPieces) {
            text += text;
        }
        CollectingWriter writer;
        jkc_convert_buffer(Context().get(), bytes(text), text.size(), JKC_TYPE_UTF8, src, true, nullptr,
                           CollectingWriter::write, &writer);
        const std::string path = dir().write(std::to_string(src), writer.text());
        for (int dst = JKC_TYPE_ASCII; dst <= JKC_TYPE_UTF8_BOM && !writer.text().empty(); dst++) {
            routes.push_back({src, dst, writer.text(), path, routes.size()});
        }
    }
    return routes;
}

std::vector<Job> make_jobs() {
    std::vector<Job> jobs;
    const auto add = [&jobs](const auto &run) {
        jobs.push_back({run, run([] {})});
        EXPECT_FALSE(jobs.back().alone.starts_with("told -"));
    };
    for (const Route &route : make_routes()) {
        add([route](const Inside &inside) { return convert(route, inside); });
        add([route](const Inside &) { return route.number % 2 == 0 ? read_slots(route) : convert_into_file(route); });
        if (route.number % 3 == 0) {
            add([route](const Inside &inside) { return feed(route, inside); });
            add([route](const Inside &) { return detect(route); });
            add([](const Inside &) { return messages(); });
        }
    }
    for (const Case &c : read_cases("judge.txt")) {
        if (c.line % 5 == 0) {
            add([c](const Inside &) { return judge(c); });
        }
    }
    return jobs;
}

void run_nested(const std::vector<Job> &jobs, size_t number, size_t depth, std::set<size_t> &wrong) {
    const Job &job = jobs[number % jobs.size()];
    const std::string answer = job.run([&] {
        if (depth > 1) {
            run_nested(jobs, number * 3 + depth, depth - 1, wrong);
        }
    });
    if (answer != job.alone) {
        wrong.insert(number % jobs.size());
    }
}

void in_threads(const std::function<void(size_t thread)> &work) {
    std::vector<std::thread> threads;
    for (size_t t = 0; t < kThreads; t++) {
        threads.emplace_back(work, t);
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    EXPECT_EQ(_getTIO(), 0) << "a slot was not freed";
}

TEST(ThreadsTest, ACallDisturbsAnotherInAThreadOrACallback) {
    const std::vector<Job> jobs = make_jobs();
    std::set<size_t> wrong[kThreads];
    in_threads([&](size_t t) {
        for (size_t i = 0; i < jobs.size(); i++) {
            run_nested(jobs, i + t * jobs.size() / kThreads, kDepth, wrong[t]);
        }
    });
    for (const auto &jobs_of_thread : wrong) {
        EXPECT_EQ(jobs_of_thread, std::set<size_t>());
    }
}

// The moment in which that can happen is short, and an open that fails leads to it often.
TEST(ThreadsTest, OneSlotIsTakenByTwo) {
    std::atomic<int> wrong;
    in_threads([&](size_t t) {
        const std::string path = dir().write("slot" + std::to_string(t), std::string(t + 1, 'a'));
        for (int i = 0; i < 40000; i++) {
            const int64_t slot = jkc_io_open(i % 8 == 0 ? path.c_str() : "", 0, 4, 4, 1, nullptr);
            const int64_t size = jkc_io_get_size(slot);
            wrong += i % 8 == 0 ? size != static_cast<int64_t>(t + 1) || jkc_io_close(slot) != 0 : slot != JKC_EROPEN;
        }
    });
    EXPECT_EQ(wrong, 0);
}

} // namespace
} // namespace jkc::testing
