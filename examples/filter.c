/*
 * Converts standard input to standard output, whatever its length, in constant memory.   filter FROM TO <IN >OUT
 * FROM and TO are names of the library, such as SJIS: the source is told, not judged.
 */
#include <jkc.h>

#include <inttypes.h>

/* Receives the output. The last argument of jkc_converter_feed() arrives as user_data. */
static int32_t write_out(const uint8_t *data, uint64_t length, void *user_data) {
    return fwrite(data, 1, (size_t)length, user_data) == length ? JKC_SUCCESS : JKC_EWRITE;
}

int main(int argc, char **argv) {
    if (argc != 3) {
        return 2;
    }
    JkcConverter *converter;
    int32_t status = jkc_converter_create(&converter, jkc_nameto_type(argv[1]), jkc_nameto_type(argv[2]), NULL);
    if (status != JKC_SUCCESS) {
        fprintf(stderr, "no converter from %s to %s\n", argv[1], argv[2]);
        return 2;
    }
    uint8_t piece[65536];
    size_t length;
    while (status == JKC_SUCCESS && (length = fread(piece, 1, sizeof piece, stdin)) > 0) {
        status = jkc_converter_feed(converter, piece, length, write_out, stdout);
    }
    if (status == JKC_SUCCESS) {
        status = jkc_converter_finish(converter, write_out, stdout);
    }
    JkcConverterLosses losses;
    losses.size = sizeof losses;
    jkc_converter_losses(converter, &losses);
    if (losses.first.kind != 0) {
        fprintf(stderr, "%" PRIu64 " lost, the first at byte %" PRIu64 "\n",
                losses.ill_formed + losses.unmappable + losses.truncated, losses.first.offset);
    }
    jkc_converter_release(converter);
    return status == JKC_SUCCESS && !ferror(stdin) ? 0 : 1;
}
