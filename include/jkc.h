/**
 * @file jkc.h
 * @brief Judges which Japanese encoding a text is in, and converts it.
 *
 * **Judge.** Make a context, ask, print the answer:
 *
 * @code{.c}
 * #include <jkc.h>
 *
 * int main(int argc, char **argv) {
 *     JkcContext *ctx = create_jkc();
 *     if (ctx == NULL || argc < 2) {
 *         return 1;
 *     }
 *     int line_ends = 0;
 *     int judged = jkc_judges_file(ctx, NULL, &line_ends, argv[1], 0);
 *     char names[160];
 *     jkc_judged_type_names(names, sizeof names, judged);
 *     printf("%s is in %s%s\n", argv[1], names, line_ends == JKC_LINE_CRLF ? ", with CR LF" : "");
 *     release_jkc(ctx);
 *     return 0;
 * }
 * @endcode
 *
 * **Convert.** Set the options in the context and call jkc_convert_buffer(), jkc_convert_stream() or
 * jkc_convert_file() with a writer. The source is judged first; an observer is told the answer and may stop there.
 * Then the writer receives the output in pieces, and the context tells what the target lacked.
 *
 * **Convert a stream of any length** whose code type you know, in constant memory and in pieces as they come:
 * jkc_converter_create() and its kin in jkc/converter.h. **Detect** the code type of such a stream, and learn what speaks
 * for each: jkc_detector_create() and its kin in jkc/detector.h.
 *
 * **Read lines, or make one file of another**, without context and callbacks: jkc_io_open(), jkc_io_get_line(),
 * jkc_io_convert_file() and their kin in jkc/slots.h.
 *
 * **Look characters up** in the mapping tables yourself: jkc/tables.h. **Scan lines** of a text in memory, or keep
 * records in a list: jkc/lines.h. **Mend mojibake**, text that was read in the wrong encoding: jkc_unmojibake() in
 * jkc/mojibake.h. This header includes all six. The routines inside the library are exported too, as
 * they are: jkc/internal.h declares them.
 *
 * **Threads.** Judgements and conversions on different contexts may run in any number of threads at once; one context is
 * used by one thread at a time. A writer or observer may start another judgement or conversion on another context, to
 * any depth, and may use the file slots; its own context it may only read and set. The library holds no lock while it
 * works or calls back, so that no callback can dead-lock. Each group below says what else holds for it.
 *
 * **Conventions.** Pointers must not be null and strings end with a NUL byte, unless a function says otherwise. Every
 * length, size and offset is in bytes. Names of files are UTF-8 on Windows, and elsewhere bytes as the system takes them.
 * Streams must be open in binary mode and belong to the C library that libjkc is linked to (on Windows: msvcrt).
 */
#ifndef JKC_H
#define JKC_H

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>
#include <stdio.h>

/* ------------------------------------------------------------------------- */
/* Version                                                                   */
/* ------------------------------------------------------------------------- */

/** @name Version of this header; the build takes the library's from here. jkc_version_number() tells that. */
/** @{ */
/** Changes when a program that was built with an older one may fail. */
#define JKC_VERSION_MAJOR 2
/** Changes when something is added. */
#define JKC_VERSION_MINOR 2
/** Changes otherwise. */
#define JKC_VERSION_PATCH 0
/** One number that can be compared: 20200 for 2.2.0. */
#define JKC_VERSION_NUMBER (JKC_VERSION_MAJOR * 10000 + JKC_VERSION_MINOR * 100 + JKC_VERSION_PATCH)
/** "2.2.0" */
#define JKC_VERSION_STRING                                                                                             \
    JKC_TO_STRING(JKC_VERSION_MAJOR) "." JKC_TO_STRING(JKC_VERSION_MINOR) "." JKC_TO_STRING(JKC_VERSION_PATCH)
/** What a macro expands to, as a string. */
#define JKC_TO_STRING(macro) JKC_TO_STRING_OF(macro)
/** What is given, as a string. */
#define JKC_TO_STRING_OF(text) #text
/** @} */

/** What is exported. Define JKC_STATIC on Windows where the static library is linked. */
#ifndef JKC_API
#if defined(_WIN32) && defined(JKC_BUILDING_LIBRARY)
#define JKC_API __declspec(dllexport)
#elif defined(_WIN32) && !defined(JKC_STATIC)
#define JKC_API __declspec(dllimport)
#elif defined(__GNUC__)
#define JKC_API __attribute__((visibility("default")))
#else
#define JKC_API
#endif
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** @return the version of the library as a number, as #JKC_VERSION_NUMBER. */
JKC_API uint32_t jkc_version_number(void);

/** @return the same as major.minor: 2.2. */
JKC_API float jkc_get_version(void);

/* ------------------------------------------------------------------------- */
/* Code types, status codes, line ends                                       */
/* ------------------------------------------------------------------------- */

/** Numbers from here on are not code types but sets of them. */
#define JKC_LOWEST_SET 64

/** An encoding. */
enum JkcCodeType {
    JKC_TYPE_EMPTY = 0,        /**< no input at all */
    JKC_TYPE_ASCII = 1,        /**< 7-bit text without escape sequences */
    JKC_TYPE_JIS = 2,          /**< ISO-2022-JP with the CP50221 repertoire */
    JKC_TYPE_JIS2004 = 3,      /**< ISO-2022-JP with the JIS X 0213:2004 planes */
    JKC_TYPE_SJIS = 4,         /**< Shift_JIS as Microsoft code page 932 */
    JKC_TYPE_EUC = 5,          /**< EUC-JP, JIS X 0208 by the standard mapping */
    JKC_TYPE_EUC_20932 = 6,    /**< EUC-JP as Microsoft code page 20932, with JIS X 0212 */
    JKC_TYPE_EUC_51932 = 7,    /**< EUC-JP as Microsoft code page 51932 */
    JKC_TYPE_EUC_MS = 8,       /**< eucJP-ms */
    JKC_TYPE_UTF16BE = 11,     /**< UTF-16 big-endian, no byte-order mark */
    JKC_TYPE_UTF16BE_BOM = 12, /**< UTF-16 big-endian after FE FF */
    JKC_TYPE_UTF16LE = 13,     /**< UTF-16 little-endian, no byte-order mark */
    JKC_TYPE_UTF16LE_BOM = 14, /**< UTF-16 little-endian after FF FE */
    JKC_TYPE_UTF8 = 15,        /**< UTF-8, no byte-order mark */
    JKC_TYPE_UTF8_BOM = 16     /**< UTF-8 after EF BB BF */
};

/** The outcome of an operation: 0, or a negative value. */
enum JkcStatus {
    JKC_SUCCESS = 0,      /**< done */
    JKC_EOF = -1,         /**< end of the input file; from a judgement: no code type fits */
    JKC_ENOTEXISTS = -2,  /**< the file does not exist */
    JKC_ENOTFILE = -3,    /**< not a regular file */
    JKC_EALLOC = -4,      /**< memory is short */
    JKC_EROPEN = -5,      /**< the input file cannot be opened */
    JKC_EWOPEN = -6,      /**< the output file cannot be opened */
    JKC_EREAD = -7,       /**< reading failed */
    JKC_EWRITE = -8,      /**< writing failed */
    JKC_EIOMODE = -10,    /**< the open mode does not allow this */
    JKC_EIOFDRANGE = -11, /**< no such file slot */
    JKC_EIONOTOPEN = -12, /**< the file slot is not open */
    JKC_EIOMAX = -13,     /**< all file slots are open */
    JKC_ECTYPE = -20,     /**< a code type that does not fit here */
    JKC_EBOM = -21,       /**< reserved; nothing reports it */
    JKC_EUEXPEOD = -22,   /**< the data ends inside a character */
    JKC_ECHAR = -23,      /**< a byte that the code type does not allow */
    JKC_ELTYPE = -24,     /**< a line type that does not exist */
    JKC_ELOSS = -25       /**< a loss, where a converter is to stop at one. It has no message of its own. */
};

/**
 * The status codes under the names that the messages begin with (EOF is the one of <stdio.h>). Define
 * JKC_NO_SHORT_STATUS_NAMES where these would meet another library's names.
 */
#ifndef JKC_NO_SHORT_STATUS_NAMES
enum {
    SUCCESS = JKC_SUCCESS,
    ENOTEXISTS = JKC_ENOTEXISTS,
    ENOTFILE = JKC_ENOTFILE,
    EALLOC = JKC_EALLOC,
    EROPEN = JKC_EROPEN,
    EWOPEN = JKC_EWOPEN,
    EREAD = JKC_EREAD,
    EWRITE = JKC_EWRITE,
    EIOMODE = JKC_EIOMODE,
    EIOFDRANGE = JKC_EIOFDRANGE,
    EIONOTOPEN = JKC_EIONOTOPEN,
    EIOMAX = JKC_EIOMAX,
    ECTYPE = JKC_ECTYPE,
    EBOM = JKC_EBOM,
    EUEXPEOD = JKC_EUEXPEOD,
    ECHAR = JKC_ECHAR,
    ELTYPE = JKC_ELTYPE
};
#endif

/** Line ends: what a conversion is to write, as the low three bits of JkcContext::mode; what was found, ORed. */
enum JkcLineType {
    JKC_LINE_KEEP = 0, /**< write each line end as it stands; found: none */
    JKC_LINE_LF = 1,   /**< LF */
    JKC_LINE_CR = 2,   /**< CR */
    JKC_LINE_CRLF = 4  /**< CR LF. To write 3, 5, 6 or 7 is to drop line ends altogether. */
};

/** Parts of JkcContext::mode. */
enum JkcModeBits {
    JKC_MODE_LINE_TYPE = 0x07, /**< option: JkcLineType of the output */
    JKC_MODE_BUFFER = 0x08,    /**< the source is memory; this bit and those below are the entry points' own */
    JKC_MODE_STREAM = 0x10,    /**< the source is a stream */
    JKC_MODE_FILE = 0x30,      /**< the source is a stream that the library opened */
    JKC_MODE_READER = 0xC0,    /**< both bits: the source is a Java reader */
    JKC_MODE_SOURCE = 0xF8     /**< all source bits */
};

/**
 * A code type in the sets that a judgement answers where several fit equally; jkc_judged_type_names() writes their
 * names. (The sets of jkc_multi_type_names() have other bits for the Unicode forms.)
 */
#define JKC_JUDGED_BIT(type) (1 << ((type) + 5))

/* ------------------------------------------------------------------------- */
/* Callbacks                                                                 */
/* ------------------------------------------------------------------------- */

/**
 * Takes converted output.
 *
 * @param data      the bytes; valid only during the call
 * @param length    how many bytes, 1 to 8193
 * @param user_data as given to the entry point
 * @return 0 when the bytes are taken. #JKC_EUEXPEOD ends the conversion in good order: the same bytes are handed over
 *         once more (with a closing escape sequence for JIS, and from UTF-8 with a replacement). Any other value ends it
 *         at once and becomes its result.
 */
typedef int32_t (*JkcWriter)(const uint8_t *data, uint64_t length, void *user_data);

/**
 * Learns what the source was judged to be, before anything is written.
 *
 * @param code_type what a judgement returns: see jkc_judges_buffer()
 * @param user_data as given to the entry point
 * @return 0 to go on; any other value stops, and the entry point returns @p code_type.
 */
typedef int32_t (*JkcObserver)(int32_t code_type, void *user_data);

/* ------------------------------------------------------------------------- */
/* The context                                                               */
/* ------------------------------------------------------------------------- */

struct JkcListNode;
struct JkcReader;

/**
 * Everything that one caller's judgements and conversions need: made by create_jkc(), freed by release_jkc().
 *
 * Set the fields marked "option", read those marked "result", leave the others to the library. The layout is part of
 * the ABI. The entry points choose the tables; a caller's own stay only where a conversion does not set them again.
 *
 * Threads: one uses it at a time.
 */
typedef struct JkcContext {
    const void *jis_src_table;      /**< JIS to Unicode; 16-bit entries when it is _jis2unibe50221_table, else 32-bit */
    const uint16_t *sjis_src_table; /**< Shift_JIS to Unicode; 65536 entries must be readable */
    const uint16_t *euc_src_table;  /**< EUC to Unicode, two-byte codes; 65536 entries must be readable */
    const uint16_t *euc_src_table_8f;  /**< EUC to Unicode, three-byte codes; null: none */
    const uint16_t *jis_dst_table;     /**< Unicode to JIS */
    const uint8_t *jis_dst_bits;       /**< JIS designation that each character needs */
    const uint16_t *jis_dst_srg_table; /**< Unicode to JIS from U+20000 on; null: none */
    const uint8_t *jis_dst_srg_bits;   /**< designations for those */
    const uint16_t *sjis_dst_table;    /**< Unicode to Shift_JIS */
    const uint16_t *euc_dst_table;     /**< Unicode to EUC, 16-bit entries; null while the next one is in use */
    const uint32_t *euc_dst_table32;   /**< Unicode to EUC, 32-bit entries; null while the last one is in use */
    const uint16_t *uni_def_table;     /**< class bits of each BMP code point */
    uint64_t jis_src_offset;           /**< JIS code of entry 0 of jis_src_table */
    uint64_t jis_src_count;            /**< entries of jis_src_table */
    uint64_t sjis_src_count;           /**< entries of sjis_src_table */
    uint64_t euc_src_count;            /**< entries of euc_src_table */
    uint64_t euc_src_count_8f;         /**< entries of euc_src_table_8f */
    uint64_t jis_dst_count;            /**< entries of jis_dst_table */
    uint64_t jis_dst_bits_count;       /**< entries of jis_dst_bits */
    uint64_t jis_dst_srg_count;        /**< entries of jis_dst_srg_table */
    uint64_t jis_dst_srg_bits_count;   /**< entries of jis_dst_srg_bits */
    uint64_t sjis_dst_count;           /**< entries of sjis_dst_table */
    uint64_t euc_dst_count;            /**< entries of euc_dst_table */
    uint64_t euc_dst_count32;          /**< entries of euc_dst_table32 */
    uint64_t uni_def_count;            /**< entries of uni_def_table */

    FILE *in_file;         /**< source stream */
    const uint8_t *in_ptr; /**< memory source: next byte to read */
    const uint8_t *in_end; /**< memory source: one past the last byte */

    uint32_t mode;         /**< option: the low three bits, a JkcLineType; the others are the source's JkcModeBits */
    int32_t sys_errno;     /**< result: errno of the last failed open or read */
    uint8_t srg_exists;    /**< result: a character beyond the BMP was seen; see jkc_convert_buffer() */
    uint8_t utfmac_exists; /**< result: a base character with a combining mark was seen */
    uint8_t utfmac_to;     /**< option: compose such pairs when converting from Unicode */
    uint8_t suppress;      /**< option: 1 leaves out what the target lacks instead of replacing it */

    int64_t read_offset;        /**< offset of the current block in the input, after any byte-order mark */
    uint8_t *block_origin;      /**< first byte of the current block */
    int64_t first_nochar_index; /**< result: offset of the first character without equivalent; -1: none */
    int64_t last_nochar_index;  /**< result: offset of the last one */
    uint32_t nochar_count;      /**< result: how many were recorded; see jkc_convert_buffer() */
    int64_t first_nochar;       /**< result: code of the first one; 0: invalid bytes, -1: none */
    int64_t last_nochar;        /**< result: code of the last one */

    struct JkcListNode *blocks; /**< the input of the running call */
    struct JkcReader *reader;   /**< Java source, else null */
    void *user_data;            /**< of the last conversion */
    JkcWriter writer;           /**< of the last conversion */
    JkcObserver observer;       /**< of the last conversion */
    int32_t sts;                /**< result: what the last judgement or conversion returned */
    float version;              /**< 2.2 */
} JkcContext;

/**
 * Makes a context with every option off. Threads: any.
 * @return the context, to be freed with release_jkc(); null when memory is short.
 */
JKC_API JkcContext *create_jkc(void);

/** Frees a context. Threads: any. @param ctx from create_jkc(); null does nothing. */
JKC_API void release_jkc(JkcContext *ctx);

/* ------------------------------------------------------------------------- */
/* Judgement. Threads: any number at once, each with a context of its own.   */
/* ------------------------------------------------------------------------- */

/**
 * Judges which code type a text in memory is in.
 *
 * @param ctx       the context; its srg_exists, utfmac_exists, sts and source table fields change
 * @param type_out  null, or receives the result; where several or no code types fit, the set of those that were
 *                  possible, as JKC_JUDGED_BIT()s
 * @param line_out  null, or receives the line ends found, as JkcLineType bits ORed; 0 when no single code type was
 *                  found; #JKC_ECTYPE where ASCII and UTF-16 fit alike
 * @param buf       the text; any pointer when @p len is 0
 * @param len       its length in bytes
 * @param preferred the JkcCodeType that wins a tie in which it takes part; 0: none
 * @return a JkcCodeType; JKC_JUDGED_BIT()s of code types that fit equally (64 or more); -1 when none fits;
 *         #JKC_EALLOC when memory is short; #JKC_EUEXPEOD when the text begins with the UTF-8 mark, @p line_out is
 *         given and its last character is cut off. jkc_judged_type_names() writes the first three as text.
 */
JKC_API int jkc_judges_buffer(JkcContext *ctx, int *type_out, int *line_out, const char *buf, size_t len,
                              int preferred);

/**
 * Judges the rest of an open stream.
 *
 * As jkc_judges_buffer(), with @p fp in place of the text.
 * @param fp an open stream; it stays open and its position is moved. A stream that carries a byte-order mark is read
 *           only up to that when @p line_out is null.
 * @return as jkc_judges_buffer(); #JKC_EREAD when reading fails (errno in sys_errno)
 */
JKC_API int jkc_judges_stream(JkcContext *ctx, int *type_out, int *line_out, FILE *fp, int preferred);

/**
 * Judges a file.
 *
 * As jkc_judges_stream(), with the file of this name.
 * @return as jkc_judges_stream(); #JKC_EROPEN when it cannot be opened (errno in sys_errno)
 */
JKC_API int jkc_judges_file(JkcContext *ctx, int *type_out, int *line_out, const char *path, int preferred);

/* ------------------------------------------------------------------------- */
/* Conversion. Threads: any number at once, each with a context of its own.  */
/* ------------------------------------------------------------------------- */

/**
 * Converts a text in memory.
 *
 * The whole input is judged and kept first (about 1.02 times its length), then converted in one pass. Options: line
 * type in ctx->mode, ctx->suppress, ctx->utfmac_to. Input judged ASCII converts like Shift_JIS; target ASCII is written
 * as Shift_JIS.
 *
 * **What the target lacks** is replaced and recorded in the nochar fields of the context: how many, and code and offset
 * (after any byte-order mark) of the first and the last. The replacement is "?". In JIS it is the full-width question
 * mark U+FF1F (21 29 in JIS X 0208), or what the table of the target has at the source's code, where a code of
 * Shift_JIS or EUC that is no character is looked up as if it were one. What to know of the record:
 * - The code is a code point where the source is Unicode (0 or a surrogate, for some beyond the BMP). From another
 *   source it is the source's own where that is no character; for a character, its code point if JIS lacks it, and 3F00
 *   plus the low byte of that if Shift_JIS or EUC does. 0 stands for invalid bytes.
 * - Counted twice can be, on the way to JIS: a code of Shift_JIS or EUC that is no character; a pair of surrogates.
 * - Not recorded: characters that ctx->suppress leaves out on the way to JIS, unless from UTF-8; invalid bytes of JIS,
 *   and those at the very end of UTF-8; look-alikes that share a code (docs/encodings.md lists them).
 * - A call that runs no converter leaves the record of the call before as it is: one whose source is empty, undecided
 *   or unreadable, whose target does not exist, or that the observer stopped.
 *
 * **Single bytes.** U+0080 and U+F8F0 to U+F8F3 (private use) become the bytes 80, A0, FD, FE and FF of Shift_JIS, where
 * a decoder takes them for lead bytes: read back, each swallows the byte behind it. U+0080 to U+009F, but for U+008E and
 * U+008F, become the bytes 80 to 9F of eucJP-ms and, from UTF-16, of generic EUC, which this library reads back. None
 * is recorded, and a short text that has one may fit no code type any more.
 *
 * **Characters beyond the BMP:** ctx->srg_exists makes JIS output use the tables of JIS X 0213:2004. Bytes of other
 * encodings can look like such characters, so it means something only for Unicode sources; an observer may clear it.
 *
 * @param ctx         the context
 * @param buf         the text; any pointer when @p len is 0
 * @param len         its length in bytes
 * @param src_type    the code type that is expected: it wins ties, it does not overrule the evidence
 * @param dst_type    the code type wanted. A type that does not exist writes nothing and gives 0.
 * @param source_hint true: take 7-bit and other text that could be Shift_JIS as @p src_type
 * @param observer    null, or told the judged code type first
 * @param writer      null (only the records of the context are made), or receives the output
 * @param user_data   passed to both; may be null
 * @return 0; a JkcStatus; or, when nothing was converted because no single code type fits or the observer said so, what
 *         the judgement returned (a code type, a set of 64 or more, -1)
 */
JKC_API int32_t jkc_convert_buffer(JkcContext *ctx, const uint8_t *buf, uint64_t len, int32_t src_type,
                                   int32_t dst_type, bool source_hint, JkcObserver observer, JkcWriter writer,
                                   void *user_data);

/** Converts the rest of an open stream, which stays open. Otherwise as jkc_convert_buffer(). */
JKC_API int32_t jkc_convert_stream(JkcContext *ctx, FILE *fp, int32_t src_type, int32_t dst_type, bool source_hint,
                                   JkcObserver observer, JkcWriter writer, void *user_data);

/**
 * Converts a file. Otherwise as jkc_convert_buffer().
 * @return as there; #JKC_EROPEN when the file cannot be opened. sys_errno holds errno in any case.
 */
JKC_API int32_t jkc_convert_file(JkcContext *ctx, const char *path, int32_t src_type, int32_t dst_type,
                                 bool source_hint, JkcObserver observer, JkcWriter writer, void *user_data);

/* ------------------------------------------------------------------------- */
/* Names. Threads: any.                                                      */
/* ------------------------------------------------------------------------- */

/**
 * Writes what a judgement returned as text: the name of a code type, the names of a set separated by ";", "None" for -1
 * (none fits), "Unknown" for anything else.
 *
 * @param buf    room for @p size bytes; any pointer when @p size is 0
 * @param size   the room, NUL included. The text is cut behind a whole name; 0 writes nothing.
 *               jkc_all_type_names_length() bytes are enough for any result.
 * @param judged the result
 * @return the length of the whole text without its NUL, as snprintf() does: it was cut when this is @p size or more
 */
JKC_API uint32_t jkc_judged_type_names(char *buf, size_t size, int judged);

/**
 * Writes the name of one code type ("SJIS", "UTF8", ...; "Unknown" when there is none).
 * @param buf room for 16 bytes
 * @return the length of the name without its NUL
 */
JKC_API uint32_t jkc_typeto_name(char *buf, int code_type);

/**
 * Finds a code type by the name that jkc_typeto_name() writes; case is ignored, and of a longer name
 * only the first 255 bytes count.
 * @return the code type, or #JKC_ECTYPE
 */
JKC_API int jkc_nameto_type(const char *name);

/**
 * Writes the names of a set of code types, separated by ";". Its bits are not those that a judgement returns.
 *
 * @param buf          room for @p size + 1 bytes, and for 16 in any case
 * @param size         how many bytes of names and separators may be written; 0 writes nothing at all. The
 *                     list is cut at a name, never inside one. A single code type is written whatever the size.
 * @param mask_or_type below 64 a code type; else a set, with bit (type + 5) for types 1 to 8 and bit (type + 3)
 *                     for types 11 to 16
 * @return the length written, without the NUL
 */
JKC_API uint32_t jkc_multi_type_names(char *buf, size_t size, int mask_or_type);

/** Writes the names of all code types as jkc_multi_type_names() does. */
JKC_API uint32_t jkc_all_type_names(char *buf, size_t size);

/** @return the bytes that jkc_all_type_names() needs, NUL included. */
JKC_API uint32_t jkc_all_type_names_length(void);

/**
 * Compares two code types of the same encoding.
 * @return 1 when @p b is @p a with a byte-order mark, -1 when @p a is @p b with one, else 0
 */
JKC_API int jkc_cmp_bom(int a, int b);

/* ------------------------------------------------------------------------- */
/* Messages. Threads: any number at once, each with a context of its own.    */
/* ------------------------------------------------------------------------- */

/**
 * Writes the message of a status code, in Japanese ("Unknown" when there is none, and for 0).
 *
 * @param ctx       serves the conversion, which overwrites its results; not used otherwise
 * @param buf       room for 64 bytes
 * @param status    a JkcStatus
 * @param code_type #JKC_TYPE_JIS, #JKC_TYPE_SJIS or #JKC_TYPE_EUC; any other value: UTF-8, with no conversion
 * @return the length written, without the NUL
 */
JKC_API uint32_t jkc_statusto_message(JkcContext *ctx, char *buf, int status, int code_type);

/**
 * Writes the system's text for an errno value, such as JkcContext::sys_errno.
 *
 * @param ctx       as for jkc_statusto_message()
 * @param errnum    the errno value
 * @param buf       room for @p size bytes; any pointer when @p size is 0
 * @param size      the room, NUL included: the text is cut to it. 0 writes nothing.
 * @param code_type as for jkc_statusto_message()
 * @return the length written, without the NUL
 */
JKC_API uint32_t jkc_get_strerror(JkcContext *ctx, int errnum, char *buf, size_t size, int code_type);

#ifdef __cplusplus
}
#endif

#include "jkc/converter.h"
#include "jkc/detector.h"
#include "jkc/lines.h"
#include "jkc/mojibake.h"
#include "jkc/slots.h"
#include "jkc/tables.h"

#endif /* JKC_H */
