// What fails outside the library: memory, streams, files. Each time the stated status, nothing leaked, and a context
// that works on.
#include <cerrno>
#include <functional>
#include <random>

#include <gtest/gtest.h>

#include "support/collecting_writer.h"
#include "support/conversion.h"
#include "support/exact_buffer.h"
#include "support/failing_alloc.h"
#include "support/test_stream.h"

namespace jkc::testing {
namespace {

const std::string kText = parse_bytes("E38182*9000 0A");

int32_t swallow(const uint8_t * /*data*/, uint64_t /*length*/, void * /*user_data*/) { return 0; }

// What reading a directory comes to.
constexpr struct {
    int status, error;
#ifdef _WIN32
} kDirectory = {JKC_EROPEN, EACCES};
#else
} kDirectory = {JKC_EREAD, EISDIR};
#endif

void expect_usable(JkcContext *ctx) {
    EXPECT_EQ(ctx->blocks->data, nullptr);
    EXPECT_EQ(ctx->mode, 0U);
    CollectingWriter writer;
    EXPECT_EQ(jkc_convert_buffer(ctx, reinterpret_cast<const uint8_t *>(kText.data()), kText.size(), 0, JKC_TYPE_EUC,
                                 false, nullptr, CollectingWriter::write, &writer),
              0);
    EXPECT_EQ(writer.text(), parse_bytes("A4A2*9000 0A"));
}

// Expects what a call answered and left in the context, which works on and is ready for the next one.
void expect_failure(JkcContext *ctx, int answer, int status, int error) {
    EXPECT_EQ(answer, status);
    EXPECT_EQ(ctx->sys_errno, error);
    EXPECT_EQ(ctx->sts, status);
    expect_usable(ctx);
    ctx->sys_errno = 0;
    ctx->sts = 0;
}

TEST(FaultsTest, MemoryRunsShortAtAnyAllocation) {
    JkcContext *ctx = create_jkc();
    const auto data = [](const std::string &text) { return reinterpret_cast<const uint8_t *>(text.data()); };
    const std::string marked = "\xEF\xBB\xBF" + kText;
    const TempDir dir;
    const std::string source = dir.write("source", kText);
    const std::string destination = dir.path("destination");
    int line = 0;
    char message[200];
    const std::function<int64_t()> operations[] = {
        [] {
            JkcContext *made = create_jkc();
            release_jkc(made);
            return made != nullptr ? 0 : JKC_EALLOC;
        },
        [&] { return jkc_judges_buffer(ctx, nullptr, &line, kText.data(), kText.size(), 0); },
        [&] { return jkc_judges_buffer(ctx, nullptr, &line, marked.data(), marked.size(), 0); },
        [&] { // clears the list itself
            ctx->in_ptr = data(kText);
            ctx->in_end = ctx->in_ptr + kText.size();
            ctx->mode = JKC_MODE_BUFFER;
            const int result = _fill_buffer(ctx, JKC_TYPE_UTF8);
            ctx->mode = 0;
            ll_clear(ctx->blocks);
            return result;
        },
        [&] { return jkc_convert_buffer(ctx, data(kText), kText.size(), 0, 4, false, nullptr, swallow, nullptr); },
        [&] { return jkc_convert_buffer(ctx, data(marked), marked.size(), 0, 15, false, nullptr, swallow, nullptr); },
        [&] { return jkc_io_path(source.c_str(), 0); },
        [&] { return jkc_io_convert_file(source.c_str(), 0, destination.c_str(), 4, 0); },
        [&] {
            const int64_t slot = jkc_io_open(source.c_str(), 0, 0, 13, 0, nullptr);
            const int64_t size = jkc_io_get_size(0);
            jkc_io_close(0);
            return slot < 0 && size == JKC_EIONOTOPEN ? slot : size - 2 * 9001;
        },
        [&] { return jkc_io_statusto_message(message, -1, JKC_TYPE_SJIS); },
    };
    const auto fail_all = [&] {
        size_t allocations = 0;
        for (const auto &operation : operations) {
            SCOPED_TRACE(&operation - operations);
            dir.write("destination", "as it was");
            allocations += fail_each_allocation(operation, [&](bool failed) {
                expect_usable(ctx);
                EXPECT_EQ(_getTIO(), 0);
                EXPECT_TRUE(!failed || dir.files()["destination"] == "as it was");
            });
        }
        return allocations;
    };
    const size_t allocations = fail_all();
    // In a writer, while the shared block is in use: each judgement and each converter allocates its own.
    struct InWriter : CollectingWriter {
        std::function<size_t()> fail_all;
        size_t allocations = 0;
    } inside;
    inside.fail_all = fail_all;
    const auto write = [](const uint8_t *bytes, uint64_t length, void *user_data) {
        auto *self = static_cast<InWriter *>(user_data);
        self->allocations = self->allocations == 0 ? self->fail_all() : self->allocations;
        return CollectingWriter::write(bytes, length, static_cast<CollectingWriter *>(self));
    };
    JkcContext *outer = create_jkc();
    EXPECT_EQ(jkc_convert_buffer(outer, data(kText), kText.size(), 0, 5, false, nullptr, write, &inside), 0);
    EXPECT_EQ(inside.text(), parse_bytes("A4A2*9000 0A"));
    EXPECT_GE(inside.allocations, allocations + 9);
    release_jkc(outer);
    release_jkc(ctx);
    EXPECT_GE(allocations, 50U) << "something is no longer allocated bit by bit: test its allocation otherwise";
    FailingAlloc alloc(0);
    ctx = create_jkc();
    EXPECT_GE(alloc.live(), 2U) << "leaks are not seen";
    release_jkc(ctx);
}

TEST(FaultsTest, AStreamFailsAtAnyByteOrAFileIsNone) {
    JkcContext *ctx = create_jkc();
    int type = 0;
    int line = 0;
    for (const std::string &text :
         !TestStream::kCutsAndFails
             ? std::vector<std::string>()
             : std::vector{kText, "\xEF\xBB\xBF" + kText, parse_bytes("FEFF 3042*9000"), std::string(20000, 'a')}) {
        for (const size_t at : {0U, 1U, 2U, 3U, 4U, 100U, 8127U, 8128U, 8129U, 8130U, 8131U, 16256U, 17000U}) {
            SCOPED_TRACE(at);
            TestStream judged(text, TestStream::kNever, at);
            TestStream converted(text, 7, at);
            expect_failure(ctx, jkc_judges_stream(ctx, &type, &line, judged.file(), 0), JKC_EREAD, EIO);
            EXPECT_EQ(type, JKC_EREAD);
            expect_failure(ctx, jkc_convert_stream(ctx, converted.file(), 15, 4, false, nullptr, swallow, nullptr),
                           JKC_EREAD, EIO);
        }
    }
    const TempDir dir;
    for (const auto &[path, status, error] : {std::tuple(dir.path("missing"), int{JKC_EROPEN}, ENOENT),
                                              std::tuple(dir.path("."), kDirectory.status, kDirectory.error)}) {
        expect_failure(ctx, jkc_judges_file(ctx, &type, &line, path.c_str(), 0), status, error);
        EXPECT_EQ(type, status);
        expect_failure(ctx, jkc_convert_file(ctx, path.c_str(), 0, 4, false, nullptr, swallow, nullptr), status, error);
    }
    release_jkc(ctx);
}

TEST(FaultsTest, AReaderFailsOrNeverEnds) {
    JkcContext *ctx = create_jkc();
    for (const int64_t last : {kReadFailed, int64_t{0}, int64_t{-1}, int64_t{-7}}) {
        CutReader reader(kText, 5000, last);
        ctx->reader = &reader;
        ctx->mode = JKC_MODE_READER;
        EXPECT_EQ(jkc_judges_stream(ctx, nullptr, nullptr, nullptr, 0),
                  last == kReadFailed ? int{JKC_EREAD} : int{JKC_TYPE_UTF8})
            << last;
        expect_usable(ctx);
    }
    int type = 0;
    EXPECT_EQ(jkc_judges_buffer(ctx, &type, nullptr, nullptr, 0, 4), JKC_TYPE_EMPTY) << "no text has no address";
    EXPECT_EQ(jkc_convert_buffer(ctx, nullptr, 0, 4, 15, true, nullptr, swallow, nullptr), 0);
    release_jkc(ctx);
}

// Any bytes at all to any target, in exact buffers: sanitizers see what goes wrong; the copies' output is known.
TEST(FaultsTest, SomeBytesAreTooMuch) {
    std::mt19937 random(1);
    const std::string telling =
        parse_bytes("1B 24 28 42 49 50 0E 0F 0A 0D 00 41 81 82 8E 8F A1 B1 C3 D8 DC E3 ED F0 FF FE EF BB BF");
    for (int i = 0; i < 6000; i++) {
        const size_t length = i % 100 == 0 ? 8100 + random() % 60 : random() % 24;
        Case c{"", {}, "", ""};
        for (size_t k = 0; k < length; k++) {
            c.input += random() % 2 != 0U ? telling[random() % telling.size()] : static_cast<char>(random());
        }
        const std::string src = std::to_string(random() % 17);
        c.options.add("src=" + src + " dst=" + std::to_string(random() % 18) + " eol=" + std::to_string(random() % 8) +
                      " suppress=" + std::to_string(random() % 3) + (random() % 2 != 0U ? " compose" : " srg") +
                      (random() % 2 != 0U ? " judged" : ""));
        const Outcome outcome = convert(c, i % 2 != 0 ? Way::kBuffer : Way::kReader);
        EXPECT_TRUE(outcome.reusable);
        if (outcome.status == 0 && outcome.told > 0 && !outcome.chunks.empty()) {
            EXPECT_LE(outcome.chunks[0].size(), 8193U);
        }
    }
}

} // namespace
} // namespace jkc::testing
