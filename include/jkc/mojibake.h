/**
 * @file jkc/mojibake.h
 * @brief Mends mojibake: text that was read in another encoding than the one that it was in. Included by jkc.h.
 *
 * @code{.c}
 * uint8_t *mended;
 * size_t mended_length;
 * JkcMending mending = {.size = sizeof mending};
 * int32_t status = jkc_unmojibake(text, length, &mended, &mended_length, &mending);
 * if (status == JKC_SUCCESS && mending.count > 0) {
 *     printf("%s that was read as %s: %s\n", jkc_misread_name(mending.steps[0].was),
 *            jkc_misread_name(mending.steps[0].read_as), (const char *)mended);
 * }
 * jkc_free(mended);
 * @endcode
 *
 * The ways back are tried, and what comes out is judged as text against the text as it stands. The answer is a proposal:
 * only a way whose outcome is clearly likelier is told, so that a sound text stays as it is. docs/repair.md tells what
 * comes back and what cannot.
 */
#ifndef JKC_MOJIBAKE_H
#define JKC_MOJIBAKE_H

#include "../jkc.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Encodings in which texts are read by mistake, beside the code types. */
enum JkcMisreadAs {
    JKC_READ_CP1252 = 101,   /**< Windows code page 1252, "ANSI"; the bytes that it lacks as C1 control characters */
    JKC_READ_CP850 = 102,    /**< DOS code page 850 */
    JKC_READ_CP437 = 103,    /**< DOS code page 437 */
    JKC_READ_LATIN1 = 104,   /**< ISO-8859-1 */
    JKC_READ_MAC_ROMAN = 105 /**< Mac OS Roman */
};

/** One misreading that is undone: text that is in `was` had been read as `read_as`. */
typedef struct JkcMisreading {
    int32_t was;     /**< #JKC_TYPE_UTF8, #JKC_TYPE_SJIS or #JKC_TYPE_EUC_MS */
    int32_t read_as; /**< one of these, or a JkcMisreadAs */
} JkcMisreading;

/** The most misreadings, one upon the other, that are undone. */
#define JKC_MISREADINGS 4

/** How a text was mended. */
typedef struct JkcMending {
    size_t size;                          /**< sizeof(JkcMending), set by the caller */
    int32_t count;                        /**< of `steps`; 0: the text is sound, or no way back is known */
    int32_t confidence;                   /**< how sure the proposal is, 0 to 100 */
    uint64_t lost;                        /**< characters that did not come back: each is U+FFFD in the mended text */
    JkcMisreading steps[JKC_MISREADINGS]; /**< in the order in which they are undone; the others are 0 */
} JkcMending;

/**
 * Mends a text, if it is mojibake.
 *
 * A long text is judged by a part of it, and again as a whole when it is mended. Besides the text and the mended one the
 * call takes about 20 kB on the stack; where more than one misreading is undone, memory for a text between them too.
 * The time grows with the length of the text only. Threads: any.
 *
 * @param text          in UTF-8; a byte-order mark at its front is passed over. Any pointer when @p length is 0.
 * @param length        its length in bytes
 * @param mended        receives the mended text in UTF-8, to be freed with jkc_free(), and a NUL byte behind it; null
 *                      where `count` is 0 and after a failure
 * @param mended_length receives its length in bytes without the NUL; 0 then
 * @param mending       null, or receives how it was mended; its `size` must be set
 * @return 0; #JKC_EALLOC when memory is short; #JKC_ECHAR when the text is not UTF-8
 */
JKC_API int32_t jkc_unmojibake(const uint8_t *text, size_t length, uint8_t **mended, size_t *mended_length,
                               JkcMending *mending);

/**
 * Names an encoding of a JkcMisreading. Threads: any.
 * @return "UTF-8", "Shift_JIS", "EUC-JP", "CP1252", ...; "" for other numbers
 */
JKC_API const char *jkc_misread_name(int32_t encoding);

#ifdef __cplusplus
}
#endif

#endif /* JKC_MOJIBAKE_H */
