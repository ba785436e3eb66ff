/**
 * @file jkc/converter.h
 * @brief Converts text that comes in pieces, in constant memory, from a code type that is told. Included by jkc.h.
 *
 * @code{.c}
 * JkcConverter *converter;
 * int32_t status = jkc_converter_create(&converter, JKC_TYPE_SJIS, JKC_TYPE_UTF8, NULL);
 * while (status == JKC_SUCCESS && (length = fread(piece, 1, sizeof piece, stdin)) > 0) {
 *     status = jkc_converter_feed(converter, piece, length, writer, stdout);
 * }
 * if (status == JKC_SUCCESS) {
 *     status = jkc_converter_finish(converter, writer, stdout);
 * }
 * jkc_converter_release(converter);
 * @endcode
 *
 * examples/filter.c is this as a whole program.
 *
 * Where callbacks do not suit, jkc_converter_run() fills the caller's buffer instead.
 *
 * The pieces may be cut anywhere, down to single bytes: the output is that of the whole text. With `one_code_each` and
 * #JKC_ON_LOSS_CLASSIC it is what jkc_convert_buffer() makes of a text that it judges to be in the source code type, but
 * for one thing: a line end that lies across two of that call's blocks of input is one line end here.
 *
 * @par Losses
 * Whatever of a text does not come through as it is, is counted, and told to an observer: bytes that are ill-formed, also
 * where a text is only copied; codes without a character; characters that the target lacks, or has in a form that would
 * not be read as a character. Line ends and composed letters that were asked for are no losses, and neither are the
 * look-alikes: the yen sign and the overline, which become the backslash and the tilde where these stand in their places,
 * and characters that the tables of several code types tell apart by their code point only. Code types are strict here:
 * in JIS, control characters, the space and DEL are themselves in every set, unless #JKC_ON_LOSS_CLASSIC reads them as
 * parts of codes.
 *
 * A converter takes about 10 kB, twice that with `places`, whatever the length of the text, and allocates nothing once it
 * is made.
 *
 * @par Threads
 * Different converters may be used in any number of threads at once, one converter by one thread at a time. A writer may
 * use other converters, but not the one that calls it.
 */
#ifndef JKC_CONVERTER_H
#define JKC_CONVERTER_H

#include "../jkc.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Converts a text in pieces. Made by jkc_converter_create(), freed by jkc_converter_release(). */
typedef struct JkcConverter JkcConverter;

/** Why something of a text is lost. */
enum JkcLossKind {
    JKC_LOSS_ILL_FORMED = 1, /**< bytes that are no character of the source code type */
    JKC_LOSS_UNMAPPABLE = 2, /**< a character that is not written as such, or a code to which the source assigns none */
    JKC_LOSS_TRUNCATED = 3   /**< the text ends inside a character */
};

/** One loss. */
typedef struct JkcLoss {
    size_t size;        /**< sizeof(JkcLoss) as the library knows it */
    uint64_t offset;    /**< where it stands in the text, behind any byte-order mark */
    uint32_t length;    /**< its bytes; with #JKC_ON_LOSS_CLASSIC all that are lost with it */
    int32_t kind;       /**< a JkcLossKind */
    int64_t code;       /**< its bytes as a number, the first one highest; the first four of a longer one */
    int64_t code_point; /**< the character that is unmappable; -1: no character */
    uint64_t line;      /**< from 1 on; lines end with LF, CR or CR LF. 0 without JkcConverterOptions::places */
    uint64_t column;    /**< which character of the line it is, from 1 on; 0 without JkcConverterOptions::places */
} JkcLoss;

/**
 * Learns of a loss, in the order of the text.
 * @param loss valid only during the call. It is counted already.
 * @return 0; any other value ends the conversion in front of the loss and becomes its status. 1 and 2, which jkc_converter_run()
 *         answers otherwise, count as #JKC_ELOSS.
 */
typedef int32_t (*JkcLossObserver)(const JkcLoss *loss, void *user_data);

/** What is written for a loss. */
enum JkcLossPolicy {
    JKC_ON_LOSS_CLASSIC = 0, /**< what jkc_convert_buffer() writes, which depends on the code types */
    JKC_ON_LOSS_REPLACE =
        1, /**< U+FFFD to Unicode, once for each ill-formed sequence as Unicode recommends it; else '?' */
    JKC_ON_LOSS_OMIT = 2,  /**< nothing */
    JKC_ON_LOSS_STOP = 3,  /**< the conversion ends in front of the first loss, which is counted, with #JKC_ELOSS */
    JKC_ON_LOSS_ESCAPE = 4 /**< `&#x20BB7;` for a character that the target lacks, else as #JKC_ON_LOSS_REPLACE */
};

/** How to convert. Set all to 0 and then `size`, and what is wanted. */
typedef struct JkcConverterOptions {
    size_t size;              /**< sizeof(JkcConverterOptions): tells the library which fields there are */
    uint32_t line_type;       /**< JkcLineType of the output; 0 keeps each line end */
    uint8_t compose;          /**< not 0: compose letters with their combining marks (Unicode sources) */
    uint8_t suppress;         /**< as JkcContext::suppress; only with #JKC_ON_LOSS_CLASSIC */
    uint8_t jis_2004;         /**< not 0: to #JKC_TYPE_JIS, use the tables of JIS X 0213:2004 */
    uint8_t on_loss;          /**< a JkcLossPolicy */
    uint8_t geta;             /**< not 0: #JKC_ON_LOSS_REPLACE and #JKC_ON_LOSS_ESCAPE write the geta mark for '?' */
    uint8_t one_code_each;    /**< not 0: of the codes that code page 932 and its kin (50221, 51932, eucJP-ms) have for
                                    the same character, only the one that is written back is known, as to
                                    jkc_convert_buffer() */
    uint8_t places;           /**< not 0: each loss tells its line and column */
    uint8_t reserved[5];      /**< 0 */
    JkcLossObserver observer; /**< null, or learns of each loss; it may not use the converter that calls it */
    void *observer_data;      /**< passed to the observer */
} JkcConverterOptions;

/**
 * What a conversion has lost so far: all that came through changed, or did not.
 *
 * The NoChar fields tell what those of JkcContext would. They miss some losses that always went unrecorded.
 */
typedef struct JkcConverterLosses {
    size_t size;                 /**< sizeof(JkcConverterLosses), set by the caller */
    uint64_t ill_formed;         /**< how many of #JKC_LOSS_ILL_FORMED */
    uint64_t unmappable;         /**< how many of #JKC_LOSS_UNMAPPABLE */
    uint64_t truncated;          /**< how many of #JKC_LOSS_TRUNCATED: 0 or 1 */
    JkcLoss first;               /**< the first one; its kind is 0 when there is none */
    JkcLoss last;                /**< the last one */
    uint64_t nochar_count;       /**< JkcContext::nochar_count */
    int64_t first_nochar_offset; /**< JkcContext::first_nochar_index */
    int64_t last_nochar_offset;  /**< JkcContext::last_nochar_index */
    int64_t first_nochar;        /**< JkcContext::first_nochar */
    int64_t last_nochar;         /**< JkcContext::last_nochar */
} JkcConverterLosses;

/** Why jkc_converter_run() has stopped. */
enum JkcConverterStop {
    JKC_STOP_END = 0,    /**< the text is converted */
    JKC_STOP_INPUT = 1,  /**< all input is taken: more is needed, or `last` */
    JKC_STOP_OUTPUT = 2, /**< the output buffer is full */
};

/**
 * Makes a converter.
 *
 * @param converter receives it; null after a failure
 * @param src_type  the code type that the text IS in: it is not judged. A byte-order mark at its front is recognised for
 *                  each Unicode form, whether the type says so or not. #JKC_TYPE_ASCII counts as Shift_JIS.
 * @param dst_type  the code type wanted; #JKC_TYPE_ASCII counts as Shift_JIS. The types with a byte-order mark begin
 *                  with one.
 * @param options   null: all off
 * @return 0; #JKC_ECTYPE for a code type that does not exist, #JKC_TYPE_EMPTY included; #JKC_ELTYPE for a line type that
 *         does not exist; #JKC_EIOMODE for a JkcLossPolicy that does not exist; #JKC_EALLOC
 */
JKC_API int32_t jkc_converter_create(JkcConverter **converter, int32_t src_type, int32_t dst_type,
                                     const JkcConverterOptions *options);

/** Frees a converter. @param converter from jkc_converter_create(); null does nothing. */
JKC_API void jkc_converter_release(JkcConverter *converter);

/** Makes a converter as good as new, for another text. */
JKC_API void jkc_converter_reset(JkcConverter *converter);

/**
 * Converts a piece of the text.
 *
 * @param data      the piece; any pointer when @p length is 0. It is not needed any more when the call returns.
 * @param writer    receives the output, as for jkc_convert_buffer(); null throws it away. Its answers mean the same.
 * @param user_data passed to the writer
 * @return 0, also when the text has come to an end of its own (the rest is passed over then); else the status with which
 *         the conversion has ended (#JKC_ELOSS or the observer's at a loss), which every further call gives until
 *         jkc_converter_reset(). The writer has received all that comes in front of the loss then.
 */
JKC_API int32_t jkc_converter_feed(JkcConverter *converter, const uint8_t *data, size_t length, JkcWriter writer,
                                   void *user_data);

/**
 * Converts what is left when the text has ended, and closes the output.
 * @return as jkc_converter_feed(); with #JKC_ON_LOSS_CLASSIC also #JKC_EUEXPEOD, from most code types when the text ends
 *         inside a character. The other policies treat that as any loss.
 */
JKC_API int32_t jkc_converter_finish(JkcConverter *converter, JkcWriter writer, void *user_data);

/**
 * Converts into a buffer, as far as input and room go.
 *
 * @param in         the input; moved behind what was taken
 * @param in_length  its length; lowered by what was taken
 * @param out        the buffer; moved behind what was written
 * @param out_length its room; lowered by what was written. Any room serves, down to one byte.
 * @param last       whether the text ends with this input
 * @return a JkcConverterStop, or the status with which the conversion has ended, as jkc_converter_feed() and
 *         jkc_converter_finish() give it: all output is written before either. A status is given by every further call
 *         until jkc_converter_reset().
 */
JKC_API int32_t jkc_converter_run(JkcConverter *converter, const uint8_t **in, size_t *in_length, uint8_t **out,
                                  size_t *out_length, bool last);

/** Tells what was lost so far. @param losses its `size` must be set */
JKC_API void jkc_converter_losses(const JkcConverter *converter, JkcConverterLosses *losses);

/**
 * Converts a text in memory at once, with a converter of its own.
 *
 * @param src_type   the code type that the text is in; #JKC_TYPE_EMPTY: it is judged, as by jkc_judges_buffer()
 * @param dst_type   as for jkc_converter_create()
 * @param data       the text; any pointer when @p length is 0
 * @param length     its length
 * @param options    as for jkc_converter_create()
 * @param out        receives the output, to be freed with jkc_free(): never null after 0. Two NUL bytes follow it.
 * @param out_length receives its length, without these
 * @param losses     null, or receives what was lost; its `size` must be set
 * @return 0, also with losses; what the judgement returned where no single code type fits (a set of
 *         #JKC_LOWEST_SET or more, -1); else as jkc_converter_create() and jkc_converter_finish(). After all but 0 there is
 *         no output, @p out is null and @p losses is as it was.
 */
JKC_API int32_t jkc_convert_memory(int32_t src_type, int32_t dst_type, const uint8_t *data, size_t length,
                                   const JkcConverterOptions *options, uint8_t **out, size_t *out_length,
                                   JkcConverterLosses *losses);

/** Frees what the library has allocated for the caller. @param memory null does nothing. */
JKC_API void jkc_free(void *memory);

/**
 * Tells how long the output of a text can be.
 * @return a length that no output to @p dst_type exceeds, whatever the text of @p length bytes and the options are; SIZE_MAX
 *         where that cannot be told
 */
JKC_API size_t jkc_converter_bound(int32_t dst_type, size_t length);

#ifdef __cplusplus
}
#endif

#endif /* JKC_CONVERTER_H */
