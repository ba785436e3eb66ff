/* Reads a Shift_JIS file line by line as UTF-8.   lines FILE */
#include <jkc.h>

#include <inttypes.h>
#include <stdlib.h>

int main(int argc, char **argv) {
    if (argc != 2) {
        return 2;
    }
    int64_t slot = jkc_io_open(argv[1], 0, JKC_TYPE_SJIS, JKC_TYPE_UTF8, 0, NULL);
    if (slot < 0) {
        char message[64];
        jkc_io_statusto_message(message, slot, JKC_TYPE_UTF8);
        fprintf(stderr, "%s: %s\n", argv[1], message);
        return 1;
    }
    /* A buffer for the whole text takes any line in one piece. */
    size_t size = (size_t)jkc_io_get_size(slot);
    char *line = malloc(size + 1);
    if (line == NULL) {
        return 1;
    }
    uint64_t length = 0;
    int64_t characters = 0;
    for (int number = 1; (characters = jkc_io_get_line(slot, line, size, &length)) >= 0; number++) {
        line[length] = '\0';
        printf("%2d %3" PRId64 " %s\n", number, characters, line);
    }
    free(line);
    jkc_io_close(slot);
    return characters == JKC_EOF ? 0 : 1;
}
