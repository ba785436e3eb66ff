/*
 * Converts a file and tells what was lost.   convert FILE CODE >OUT
 * CODE is a name of the library, such as SJIS.
 */
#include <jkc.h>

#include <inttypes.h>

/* Learns what the source was judged to be; any other answer than 0 would stop here. */
static int32_t observe(int32_t code_type, void *user_data) {
    char name[16];
    (void)user_data;
    jkc_typeto_name(name, code_type);
    fprintf(stderr, "from %s\n", name);
    return 0;
}

/* Receives the output, 8 KiB at a time. The last argument of jkc_convert_file() arrives as user_data. */
static int32_t write_out(const uint8_t *data, uint64_t length, void *user_data) {
    FILE *out = user_data;
    return fwrite(data, 1, (size_t)length, out) == length ? JKC_SUCCESS : JKC_EWRITE;
}

/* The code is a code point when the source is Unicode, else one of the source, and 0 for bytes that are none. */
static void tell_lost(const char *which, int64_t code, int64_t offset) {
    fprintf(stderr, "%s: 0x%" PRIX64 " at byte %" PRId64 "\n", which, (uint64_t)code, offset);
}

int main(int argc, char **argv) {
    if (argc != 3) {
        return 2;
    }
    int target = jkc_nameto_type(argv[2]);
    if (target <= 0) {
        fprintf(stderr, "%s is no code type\n", argv[2]);
        return 2;
    }
    JkcContext *ctx = create_jkc();
    if (ctx == NULL) {
        return 1;
    }
    ctx->mode |= JKC_LINE_LF;
    int32_t status = jkc_convert_file(ctx, argv[1], 0, target, false, observe, write_out, stdout);
    if (status != JKC_SUCCESS) {
        char message[64];
        jkc_statusto_message(ctx, message, status, JKC_TYPE_UTF8);
        fprintf(stderr, "%s: %s\n", argv[1], message);
    }
    if (ctx->nochar_count > 0) {
        fprintf(stderr, "%" PRIu32 " without equivalent\n", ctx->nochar_count);
        tell_lost("first", ctx->first_nochar, ctx->first_nochar_index);
        tell_lost("last", ctx->last_nochar, ctx->last_nochar_index);
    }
    release_jkc(ctx);
    return status == JKC_SUCCESS ? 0 : 1;
}
