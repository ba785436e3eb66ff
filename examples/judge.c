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

/* The names of a code type, or of the set of several that fit. */
static void print_names(int judged) {
    for (int type = JKC_TYPE_EMPTY; type <= JKC_TYPE_UTF8_BOM; type++) {
        if (type == judged || (judged >= 64 && (judged & JKC_JUDGED_BIT(type)) != 0)) {
            char name[16];
            jkc_typeto_name(name, type);
            printf(" %s", name);
        }
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
            print_names(type);
            if (type >= 64) {
                printf(" fit alike\n");
            } else {
                printf(", line ends: %s\n", line_ends(eol));
            }
        }
    }
    release_jkc(ctx);
    return 0;
}
