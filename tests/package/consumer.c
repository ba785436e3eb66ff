/* Uses the installed library as a C99 program would: judges and converts one word. */
#include <jkc.h>

#include <string.h>

static int32_t append(const uint8_t *data, uint64_t length, void *user_data) {
    strncat((char *)user_data, (const char *)data, (size_t)length);
    return 0;
}

int main(void) {
    static const char sjis[] = "\x93\xfa\x96\x7b\x8c\xea\x82\xc5\x82\xb7\x81\x42"; /* nihongo desu. */
    char utf8[64] = "";
    JkcContext *ctx = create_jkc();
    if (ctx == NULL) {
        return 1;
    }
    int type = jkc_judges_buffer(ctx, NULL, NULL, sjis, sizeof sjis - 1, JKC_TYPE_SJIS);
    int32_t status = jkc_convert_buffer(ctx, (const uint8_t *)sjis, sizeof sjis - 1, JKC_TYPE_SJIS, JKC_TYPE_UTF8,
                                        false, NULL, append, utf8);
    release_jkc(ctx);
    /* Through the table too: exported data must be reachable from outside. */
    int through_table = _sjis2unibe932_table[0x93fa] == 0x65e5 && _sjis2unibe932_table_size > 0x93fa;
    int right = strcmp(utf8, "\xe6\x97\xa5\xe6\x9c\xac\xe8\xaa\x9e\xe3\x81\xa7\xe3\x81\x99\xe3\x80\x82") == 0;
    printf("judged %d, status %d, text %s, table %s\n", type, (int)status, right ? "right" : utf8,
           through_table ? "right" : "wrong");
    return type == JKC_TYPE_SJIS && status == 0 && right && through_table ? 0 : 1;
}
