/* Tells which code type each file is in.   judge FILE... */
#include <jkc.h>

#include <string.h>

static const char *line_ends(int found) {
    switch (found) {
    case JKC_LINE_LF:
        return "LF";
    case JKC_LINE_CR:
        return "CR";
    case JKC_LINE_CRLF:
        return "CR LF";
    default:
        return found == JKC_LINE_KEEP ? "none" : "several kinds";
    }
}

int main(int argc, char **argv) {
    JkcContext *ctx = create_jkc();
    if (ctx == NULL) {
        return 1;
    }
    for (int i = 1; i < argc; i++) {
        int eol = 0;
        int type = jkc_judges_file(ctx, NULL, &eol, argv[i], 0);
        printf("%s:", argv[i]);
        if (type == JKC_EROPEN || type == JKC_EREAD) {
            printf(" %s\n", strerror(ctx->sys_errno));
        } else if (type < 0) {
            printf(" no Japanese text\n");
        } else {
            char names[160];
            jkc_judged_type_names(names, sizeof names, type);
            if (type >= 64) {
                printf(" %s fit alike\n", names);
            } else {
                printf(" %s, line ends: %s\n", names, line_ends(eol));
            }
        }
    }
    release_jkc(ctx);
    return 0;
}
