/**
 * @file jkc/detector.h
 * @brief Tells which code type a text is in that comes in pieces, in constant memory. Included by jkc.h.
 *
 * @code{.c}
 * JkcDetector *detector;
 * int32_t status = jkc_detector_create(&detector, NULL);
 * while (status == JKC_SUCCESS && (length = fread(piece, 1, sizeof piece, stdin)) > 0) {
 *     jkc_detector_feed(detector, piece, length);
 * }
 * JkcDetection found = {.size = sizeof found};
 * if (status == JKC_SUCCESS) {
 *     jkc_detector_finish(detector, &found);
 *     printf("%s, by the rule \"%s\"\n", jkc_decision_name(found.decision), jkc_rule_name(found.rule));
 * }
 * jkc_detector_release(detector);
 * @endcode
 *
 * examples/detector.c is this as a whole program.
 *
 * There are two answers. The **judgement** is that of jkc_judges_buffer(), rule for rule. The **decision** is for people
 * who want one right answer on text of any language and length: a code type, or that the text is open between some, or
 * that it is no text. Each decision names the rule that made it. The program and the bindings go by the decision.
 *
 * The pieces may be cut anywhere: the answers are those of the whole text. A detector takes less than 64 kB, whatever the
 * length of the text, and allocates nothing once it is made. It does not stop early: text behind a byte-order mark is
 * looked at to its end, for line ends and for what is told of its bytes.
 *
 * @par Threads
 * Different detectors may be used in any number of threads at once, one detector by one thread at a time.
 */
#ifndef JKC_DETECTOR_H
#define JKC_DETECTOR_H

#include "../jkc.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Detects a text in pieces. Made by jkc_detector_create(), freed by jkc_detector_release(). */
typedef struct JkcDetector JkcDetector;

/** How to detect. Set all to 0 and then `size`, and what is wanted. */
typedef struct JkcDetectorOptions {
    size_t size;       /**< sizeof(JkcDetectorOptions): tells the library which fields there are */
    int32_t preferred; /**< the JkcCodeType that wins a tie in which it takes part; 0: none */
    int32_t reserved;  /**< 0 */
} JkcDetectorOptions;

/**
 * What was found for one candidate. All numbers but the offset are in bytes. A candidate is out with 11 bytes in
 * `ill_formed`, and not counted on then; behind a byte-order mark, and once ISO-2022-JP is certain, none is counted.
 */
typedef struct JkcEvidence {
    int32_t type;        /**< the JkcCodeType of the candidate */
    int32_t reserved;    /**< 0 */
    int64_t valid;       /**< in characters that the code type maps, beyond ASCII */
    int64_t ill_formed;  /**< in sequences that it lacks or that are ill-formed */
    int64_t kana;        /**< in hiragana and katakana */
    int64_t penalty;     /**< in half-width katakana that stand alone */
    int64_t first_error; /**< offset in the text where the first of `ill_formed` stands; -1: none */
} JkcEvidence;

/** How many candidates a detection tells of. */
#define JKC_CANDIDATES 8

/** What a decision says besides code types. */
enum JkcDecision {
    JKC_DECISION_UNDECIDED = -1, /**< several code types are as likely: see `open` */
    JKC_DECISION_NONE = -2,      /**< text that fits no code type: a mix of several, or damaged */
    JKC_DECISION_BINARY = -3     /**< no text */
};

/** What a detector has found. */
typedef struct JkcDetection {
    size_t size;               /**< sizeof(JkcDetection), set by the caller */
    uint64_t length;           /**< of the text */
    int32_t judged;            /**< as jkc_judges_buffer() returns it */
    int32_t judged_set;        /**< as its `type_out` */
    int32_t line_ends;         /**< as its `line_out`: JkcLineType bits, 0 or #JKC_ECTYPE */
    uint8_t srg_exists;        /**< as JkcContext::srg_exists afterwards */
    uint8_t utfmac_exists;     /**< as JkcContext::utfmac_exists afterwards */
    uint8_t line_ends_bytes;   /**< the kinds of line ends, as JkcLineType bits, of the text as bytes */
    uint8_t line_ends_utf16be; /**< the same of its big-endian UTF-16 code units */
    uint8_t line_ends_utf16le; /**< the same of its little-endian ones; both 0 for text that is out as UTF-16 */
    uint8_t reserved[7];       /**< 0 */
    JkcEvidence evidence[JKC_CANDIDATES]; /**< of SJIS, the four EUC types, UTF-16BE, UTF-16LE and UTF-8 */
    int64_t utf8_first_error; /**< offset where the text is ill-formed as UTF-8 by the standard, which allows
                                               neither longer forms nor surrogates nor an end inside a character; -1: nowhere */
    uint64_t utf8_two_byte;   /**< well-formed UTF-8 characters of two bytes before that */
    uint64_t utf8_longer;     /**< the same of three and four bytes */
    uint64_t nul_count;       /**< NUL bytes */
    uint64_t control_count;   /**< C0 control bytes but NUL, HT, LF, VT, FF, CR, SO, SI, ESC */
    int32_t decision;         /**< a JkcCodeType, or a JkcDecision */
    int32_t open;             /**< undecided: the JKC_JUDGED_BIT()s of the likely code types; else 0 */
    int32_t rule;             /**< the rule that decided: jkc_rule_name() */
    int32_t confidence;       /**< how sure the decision is, 0 to 100 */
} JkcDetection;

/**
 * Makes a detector. Threads: any.
 * @param detector receives it, to be freed with jkc_detector_release(); null after a failure
 * @param options  null: nothing preferred
 * @return 0 or #JKC_EALLOC
 */
JKC_API int32_t jkc_detector_create(JkcDetector **detector, const JkcDetectorOptions *options);

/** Frees a detector. @param detector from jkc_detector_create(); null does nothing. */
JKC_API void jkc_detector_release(JkcDetector *detector);

/** Makes a detector as good as new, for another text. */
JKC_API void jkc_detector_reset(JkcDetector *detector);

/**
 * Looks at a piece of the text.
 * @param data the piece; any pointer when @p length is 0. It is not needed any more when the call returns.
 */
JKC_API void jkc_detector_feed(JkcDetector *detector, const uint8_t *data, size_t length);

/**
 * Ends the text and tells what was found. Further calls tell the same; pieces fed after it are passed over until
 * jkc_detector_reset().
 * @param found its `size` must be set
 */
JKC_API void jkc_detector_finish(JkcDetector *detector, JkcDetection *found);

/** Threads: any. @return the name of a rule, such as "well-formed UTF-8"; "" for a number that is none */
JKC_API const char *jkc_rule_name(int32_t rule);

/** Threads: any. @return the name of a code type, or of a JkcDecision ("undecided", "unknown", "binary"); "" for other numbers */
JKC_API const char *jkc_decision_name(int32_t decision);

#ifdef __cplusplus
}
#endif

#endif /* JKC_DETECTOR_H */
