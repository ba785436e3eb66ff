/* Tells which code type each file is in, and why, in constant memory.   detector [FILE...], else standard input */
#include <jkc.h>

#include <inttypes.h>

/* What speaks for and against each candidate that has not failed early. */
static void print_evidence(const JkcDetection *found) {
    for (int i = 0; i < JKC_CANDIDATES; i++) {
        const JkcEvidence *e = &found->evidence[i];
        if (e->valid > e->ill_formed) {
            printf("    %s: %" PRId64 " bytes of characters, %" PRId64 " ill-formed", jkc_decision_name(e->type),
                   e->valid, e->ill_formed);
            if (e->first_error >= 0) {
                printf(", the first at %" PRId64, e->first_error);
            }
            printf("\n");
        }
    }
}

static int detect(JkcDetector *detector, const char *name, FILE *file) {
    uint8_t piece[65536];
    size_t length;
    jkc_detector_reset(detector);
    while ((length = fread(piece, 1, sizeof piece, file)) > 0) {
        jkc_detector_feed(detector, piece, length);
    }
    if (ferror(file)) {
        perror(name);
        return 1;
    }
    JkcDetection found;
    found.size = sizeof found;
    jkc_detector_finish(detector, &found);
    printf("%s: %s, by the rule \"%s\"\n", name, jkc_decision_name(found.decision), jkc_rule_name(found.rule));
    if (found.decision == JKC_DECISION_UNDECIDED) {
        char names[160];
        jkc_judged_type_names(names, sizeof names, found.open);
        printf("    open: %s\n", names);
    }
    print_evidence(&found);
    return 0;
}

int main(int argc, char **argv) {
    JkcDetector *detector;
    int failed = 0;
    if (jkc_detector_create(&detector, NULL) != JKC_SUCCESS) {
        return 1;
    }
    if (argc < 2) {
        failed = detect(detector, "standard input", stdin);
    }
    for (int i = 1; i < argc; i++) {
        FILE *file = fopen(argv[i], "rb");
        if (file == NULL) {
            perror(argv[i]);
            failed = 1;
            continue;
        }
        failed |= detect(detector, argv[i], file);
        fclose(file);
    }
    jkc_detector_release(detector);
    return failed;
}
