// Judges and converts each file of its arguments through every kind of C source, and prints a line for each outcome,
// for the Java tests to compare theirs with.
#include <jkc.h>

#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

struct Input {
    const char *path;
    FILE *fp;
    std::vector<char> bytes;
};

uint64_t output_length;
uint64_t output_hash; // FNV-1a

int32_t collect(const uint8_t *data, uint64_t length, void * /*user_data*/) {
    for (output_length += length; length > 0; --length) {
        output_hash = (output_hash ^ *data++) * 0x100000001B3;
    }
    return JKC_SUCCESS;
}

int judge(JkcContext *ctx, char source, const Input &in, int from, int *type, int *line) {
    switch (source) {
    case 'b':
        return jkc_judges_buffer(ctx, type, line, in.bytes.data(), in.bytes.size(), from);
    case 's':
        return jkc_judges_stream(ctx, type, line, in.fp, from);
    default:
        return jkc_judges_file(ctx, type, line, in.path, from);
    }
}

int convert(JkcContext *ctx, char source, const Input &in, int from, int to) {
    switch (source) {
    case 'b':
        return jkc_convert_buffer(ctx, reinterpret_cast<const uint8_t *>(in.bytes.data()), in.bytes.size(), from, to,
                                  true, nullptr, collect, nullptr);
    case 's':
        return jkc_convert_stream(ctx, in.fp, from, to, true, nullptr, collect, nullptr);
    default:
        return jkc_convert_file(ctx, in.path, from, to, true, nullptr, collect, nullptr);
    }
}

void report(char source, const Input &in, int from) {
    JkcContext *ctx = create_jkc();
    int type = 0;
    int line = 0;
    rewind(in.fp);
    const int judged = judge(ctx, source, in, from, &type, &line);
    printf("%c %d judged %d %d %d\n", source, from, judged, type, line);
    for (int to = JKC_TYPE_ASCII; to <= JKC_TYPE_UTF8_BOM; ++to) {
        output_length = 0;
        output_hash = 0xCBF29CE484222325;
        rewind(in.fp);
        const int result = convert(ctx, source, in, from, to);
        printf("%c %d to %d: %d, %d lost, at %d %d, %ld %ld, %lu bytes %lx\n", source, from, to, result,
               static_cast<int>(ctx->nochar_count), static_cast<int>(ctx->first_nochar_index),
               static_cast<int>(ctx->last_nochar_index), ctx->first_nochar, ctx->last_nochar, output_length,
               output_hash);
    }
    release_jkc(ctx);
}

} // namespace

int main(int argc, char **argv) {
    for (int i = 1; i < argc; ++i) {
        Input in{argv[i], fopen(argv[i], "rb"), {}};
        if (in.fp == nullptr) {
            perror(in.path);
            return EXIT_FAILURE;
        }
        for (int c = getc(in.fp); c != EOF; c = getc(in.fp)) {
            in.bytes.push_back(static_cast<char>(c));
        }
        for (const int from : {JKC_TYPE_EMPTY, JKC_TYPE_EUC}) {
            for (const char source : {'b', 's', 'f'}) {
                report(source, in, from);
            }
        }
        fclose(in.fp);
    }
    return EXIT_SUCCESS;
}
