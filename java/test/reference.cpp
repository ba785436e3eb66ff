// Judges and converts each file of its arguments through every kind of C source, and prints a line for each outcome,
// for the Java tests to compare theirs with.
#include <jkc.h>

#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

struct Output {
    uint64_t length = 0;
    uint64_t hash = 0xCBF29CE484222325; // FNV-1a
};

int32_t collect(const uint8_t *data, uint64_t length, void *user_data) {
    auto &output = *static_cast<Output *>(user_data);
    output.length += length;
    for (uint64_t i = 0; i < length; ++i) {
        output.hash = (output.hash ^ data[i]) * 0x100000001B3;
    }
    return JKC_SUCCESS;
}

enum class Source { kBuffer, kStream, kFile };
constexpr struct {
    Source source;
    const char *name;
} kSources[] = {{Source::kBuffer, "buffer"}, {Source::kStream, "stream"}, {Source::kFile, "file"}};

constexpr int kExpected[] = {0, JKC_TYPE_SJIS, JKC_TYPE_EUC, JKC_TYPE_UTF8};

int judge(JkcContext *ctx, Source source, FILE *fp, const std::vector<char> &bytes, const char *path, int expected,
          int *type, int *line) {
    switch (source) {
    case Source::kBuffer:
        return jkc_judges_buffer(ctx, type, line, bytes.data(), bytes.size(), expected);
    case Source::kStream:
        return jkc_judges_stream(ctx, type, line, fp, expected);
    default:
        return jkc_judges_file(ctx, type, line, path, expected);
    }
}

int convert(JkcContext *ctx, Source source, FILE *fp, const std::vector<char> &bytes, const char *path, int expected,
            int to, Output *output) {
    switch (source) {
    case Source::kBuffer:
        return jkc_convert_buffer(ctx, reinterpret_cast<const uint8_t *>(bytes.data()), bytes.size(), expected, to,
                                  true, nullptr, collect, output);
    case Source::kStream:
        return jkc_convert_stream(ctx, fp, expected, to, true, nullptr, collect, output);
    default:
        return jkc_convert_file(ctx, path, expected, to, true, nullptr, collect, output);
    }
}

void report(FILE *fp, const std::vector<char> &bytes, const char *path, int expected) {
    for (const auto &[source, name] : kSources) {
        JkcContext *ctx = create_jkc();
        if (ctx == nullptr) {
            abort();
        }
        int type = 0;
        int line = 0;
        rewind(fp);
        const int judged = judge(ctx, source, fp, bytes, path, expected, &type, &line);
        printf("%s %d judged %d %d %d %d\n", name, expected, judged, type, line, ctx->sts);
        for (int to = JKC_TYPE_ASCII; to <= JKC_TYPE_UTF8_BOM; ++to) {
            Output output;
            rewind(fp);
            const int result = convert(ctx, source, fp, bytes, path, expected, to, &output);
            printf("%s %d to %d: %d %d, %d lost, at %d %d, %lld %lld, %llu bytes %llx\n", name, expected, to, result,
                   ctx->sts, static_cast<int>(ctx->nochar_count), static_cast<int>(ctx->first_nochar_index),
                   static_cast<int>(ctx->last_nochar_index), static_cast<long long>(ctx->first_nochar),
                   static_cast<long long>(ctx->last_nochar), static_cast<unsigned long long>(output.length),
                   static_cast<unsigned long long>(output.hash));
        }
        release_jkc(ctx);
    }
}

} // namespace

int main(int argc, char **argv) {
    for (int i = 1; i < argc; ++i) {
        FILE *fp = fopen(argv[i], "rb");
        if (fp == nullptr) {
            perror(argv[i]);
            return 1;
        }
        std::vector<char> bytes;
        for (int c = getc(fp); c != EOF; c = getc(fp)) {
            bytes.push_back(static_cast<char>(c));
        }
        for (const int expected : kExpected) {
            report(fp, bytes, argv[i], expected);
        }
        fclose(fp);
    }
    return 0;
}
