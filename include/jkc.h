/**
 * @file jkc.h
 * @brief libjkc: judge which Japanese encoding a text is in, and convert it.
 *
 * Four ways of use:
 *
 * 1. Judge only. Create a context, call jkc_judges_buffer(), jkc_judges_stream()
 *    or jkc_judges_file(), read the code type from the result:
 *
 *        JkcContext *ctx = create_jkc();
 *        int eol = 0;
 *        int type = jkc_judges_file(ctx, NULL, &eol, "letter.txt", JKC_TYPE_SJIS);
 *        char names[256];
 *        jkc_multi_type_names(names, sizeof names - 1, type);
 *        release_jkc(ctx);
 *
 * 2. Convert. Set the options in the context (line ends, composition, what to do
 *    with characters that the target lacks) and call jkc_convert_buffer(),
 *    jkc_convert_stream() or jkc_convert_file() with a writer. The source is judged
 *    first; the observer is told the answer and may stop the conversion. The writer
 *    receives the output in pieces of at most 8193 bytes.
 *
 * 3. Read a text file line by line, or convert one file into another, without a
 *    context and callbacks: jkc_io_open(), jkc_io_get_line() and their kin.
 *
 * 4. Look up characters yourself in the mapping tables: define
 *    JKC_INTERNAL_API before including this header. The names below that fence are
 *    exported too, but they may change with the major version.
 *
 * +-----------------------------------------------------------------------------+
 * | Only ONE judgement or conversion may run at a time in a whole process, even |
 * | on different contexts: they share one static buffer, and nothing is locked. |
 * | A writer or observer must not start another one. The name functions         |
 * | (jkc_typeto_name() and so on) and the tables are free for any thread.       |
 * +-----------------------------------------------------------------------------+
 *
 * Unless a function says otherwise, pointers must not be null, every length and
 * size is in bytes, and strings end with a NUL byte.
 */
#ifndef JKC_H
#define JKC_H

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>
#include <stdio.h>

/** @name Version of this header. jkc_get_version() tells that of the library. */
/** @{ */
#define JKC_VERSION_MAJOR 2
#define JKC_VERSION_MINOR 2
#define JKC_VERSION_STRING "2.2"
/** @} */

#if defined(__GNUC__)
#define JKC_API __attribute__((visibility("default")))
#else
#define JKC_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ------------------------------------------------------------------------- */
/* Code types, status codes, line ends                                       */
/* ------------------------------------------------------------------------- */

/** An encoding. Values of 64 and more are not code types but sets of them. */
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
    JKC_ELTYPE = -24      /**< a line type that does not exist */
};

/**
 * The status codes under the names that the messages begin with. Define
 * JKC_NO_SHORT_STATUS_NAMES where these would meet another library's names;
 * EOF is the one of <stdio.h>.
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

/**
 * Line ends: as the low three bits of JkcContext::mode what a conversion writes,
 * and, ORed together, what a judgement found.
 */
enum JkcLineType {
    JKC_LINE_KEEP = 0, /**< write each line end as it stands */
    JKC_LINE_LF = 1,   /**< LF */
    JKC_LINE_CR = 2,   /**< CR */
    JKC_LINE_CRLF = 4  /**< CR LF. The values 3, 5, 6 and 7 drop line ends altogether. */
};

/** Parts of JkcContext::mode. */
enum JkcModeBits {
    JKC_MODE_LINE_TYPE = 0x07, /**< JkcLineType of the output */
    JKC_MODE_BUFFER = 0x08,    /**< the source is memory */
    JKC_MODE_STREAM = 0x10,    /**< the source is a stream */
    JKC_MODE_FILE = 0x30,      /**< the source is a stream that the library opened */
    JKC_MODE_READER = 0xC0,    /**< both bits: the source is a Java reader */
    JKC_MODE_SOURCE = 0xF8     /**< all source bits; set and cleared by the entry points */
};

/**
 * The sets that a judgement reports when several code types fit equally: bit
 * (type + 5) for each. (jkc_multi_type_names() numbers the Unicode forms otherwise,
 * see there.)
 */
#define JKC_JUDGED_BIT(type) (1 << ((type) + 5))

/* ------------------------------------------------------------------------- */
/* Callbacks                                                                 */
/* ------------------------------------------------------------------------- */

/**
 * Takes converted output.
 *
 * @param data      the bytes; valid only during the call
 * @param length    how many, 1 to 8193
 * @param user_data as given to the entry point
 * @return 0 when the bytes are taken. #JKC_EUEXPEOD ends the conversion in good order:
 *         the same bytes are handed over once more (with a closing escape sequence for
 *         JIS, and from UTF-8 with a substitute). Any other value ends it at once and
 *         becomes its result.
 */
typedef int32_t (*JkcWriter)(const uint8_t *data, uint64_t length, void *user_data);

/**
 * Learns what the source was judged to be, before anything is written.
 *
 * @param code_type a JkcCodeType, a set of several (64 or more), -1 when none fits, or
 *                  another negative JkcStatus
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
 * Everything that one caller's judgements and conversions need. Made by create_jkc(),
 * freed by release_jkc(). It belongs to one thread at a time.
 *
 * The caller may set the fields marked "option" and read those marked "result". The
 * layout is part of the ABI. The entry points choose the tables; a caller's own
 * tables can be set only where a conversion does not set them again.
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
    FILE *in_file;                     /**< source stream */
    const uint8_t *in_ptr;             /**< memory source: next byte to read */
    const uint8_t *in_end;             /**< memory source: one past the last byte */
    uint32_t mode;                     /**< JkcModeBits; option: the low three bits, a JkcLineType */
    int32_t sys_errno;                 /**< result: errno of the last failed open or read */
    uint8_t srg_exists;                /**< result: a character beyond the BMP was seen. Bytes of other
                                            encodings can look like one, so it means something only for
                                            the Unicode code types. An observer may clear it. */
    uint8_t utfmac_exists;             /**< result: a base character with a combining mark was seen */
    uint8_t utfmac_to;                 /**< option: compose such pairs when converting from Unicode */
    uint8_t suppress;      /**< option: 1 leaves out what the target lacks instead of writing a substitute */
    int64_t read_offset;   /**< offset of the current block in the input, after any byte-order mark */
    uint8_t *block_origin; /**< first byte of the current block */
    int64_t
        first_nochar_index; /**< result: where the first character without equivalent stands: offset in bytes after any byte-order mark, -1: none */
    int64_t last_nochar_index; /**< result: where the last one stands */
    uint32_t nochar_count;     /**< result: how many there were */
    int64_t
        first_nochar; /**< result: code of the first one (source code, or code point from Unicode; 0: invalid bytes), -1: none */
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
 * Makes a context with every option off.
 * @return the context, to be freed with release_jkc(); null when memory is short.
 */
JKC_API JkcContext *create_jkc(void);

/** Frees a context. @param ctx from create_jkc(); null does nothing. */
JKC_API void release_jkc(JkcContext *ctx);

/** @return the version of the library, 2.2. */
JKC_API float jkc_get_version(void);

/* ------------------------------------------------------------------------- */
/* Judgement                                                                 */
/* ------------------------------------------------------------------------- */

/**
 * Judges which code type a text in memory is in.
 *
 * @param ctx       the context; its srg_exists, utfmac_exists, sts and source table
 *                  fields change
 * @param type_out  null, or receives the result; where several or no code types fit it
 *                  receives the set of those that were possible, as JKC_JUDGED_BIT()s
 * @param line_out  null, or receives the line ends found, as JkcLineType bits ORed; 0 when no
 *                  single code type was found; #JKC_ECTYPE where ASCII and UTF-16 fit alike
 * @param buf       the text; any pointer when @p len is 0
 * @param len       its length in bytes
 * @param preferred the JkcCodeType that wins a tie in which it takes part; 0: none
 * @return a JkcCodeType, JKC_JUDGED_BIT()s of code types that fit equally (64 or more), -1 when
 *         none fits, #JKC_EALLOC when memory is short, #JKC_EUEXPEOD when the text begins with
 *         the UTF-8 mark, @p line_out is given and its last character is cut off
 */
JKC_API int jkc_judges_buffer(JkcContext *ctx, int *type_out, int *line_out, const char *buf, size_t len,
                              int preferred);

/**
 * Judges the rest of an open stream.
 *
 * As jkc_judges_buffer(), with @p fp in place of the text.
 * @param fp an open stream; it stays open and its position is moved. A stream that carries a byte-order
 *           mark is read only up to that when @p line_out is null.
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
/* Conversion                                                                */
/* ------------------------------------------------------------------------- */

/**
 * Converts a text in memory.
 *
 * The whole input is judged and kept first (about 1.02 times its length), then converted in one pass.
 * Options: line type in ctx->mode, ctx->suppress, ctx->utfmac_to. Afterwards the NoChar fields of the
 * context tell what had no equivalent. Input judged ASCII converts like Shift_JIS; target ASCII is written as
 * Shift_JIS.
 *
 * @param ctx         the context
 * @param buf         the text; any pointer when @p len is 0
 * @param len         its length in bytes
 * @param src_type    the code type that is expected: it wins ties, it does not overrule the evidence
 * @param dst_type    the code type wanted. A type that does not exist writes nothing and gives 0.
 * @param source_hint true: take 7-bit and other text that could be Shift_JIS as @p src_type
 * @param observer    null, or told the judged code type first
 * @param writer      null (only the records of the context are made), or receives the output
 * @param user_data   passed to both
 * @return 0; a JkcStatus; or, when nothing was converted because no single code type fits or the observer said
 *         so, what the judgement returned (a code type, a set of 64 or more, -1)
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
/* Names and messages                                                        */
/* ------------------------------------------------------------------------- */

/**
 * Writes the name of a code type ("SJIS", "UTF8", ...; "Unknown" when there is none).
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
 * Writes the names of a set of code types, separated by ";".
 *
 * @param buf          room for @p size + 1 bytes
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

/**
 * Writes the message of a status code, in Japanese ("Unknown" when there is none, and for 0).
 *
 * @param ctx       serves the conversion; not used otherwise
 * @param buf       room for 64 bytes
 * @param status    a JkcStatus
 * @param code_type #JKC_TYPE_JIS, #JKC_TYPE_SJIS or #JKC_TYPE_EUC; any other value: UTF-8
 * @return the length written, without the NUL
 */
JKC_API uint32_t jkc_statusto_message(JkcContext *ctx, char *buf, int status, int code_type);

/**
 * Writes the system's text for an errno value, such as JkcContext::sys_errno.
 *
 * @param buf       room for @p size bytes; the text is cut to it
 * @param size      0 writes nothing
 * @param code_type as for jkc_statusto_message()
 * @return the length written, without the NUL
 */
JKC_API uint32_t jkc_get_strerror(JkcContext *ctx, int errnum, char *buf, size_t size, int code_type);

/* ------------------------------------------------------------------------- */
/* File slots: converted files, read line by line                            */
/* ------------------------------------------------------------------------- */

/**
 * @name File slots
 *
 * A slot holds a whole file, converted in memory. 100 of them, numbered from 0, exist in the process;
 * jkc_io_open() fills one, jkc_io_get_line() reads it, jkc_io_close() frees it. No context is needed.
 *
 * All results are 64 bits wide. Each function that takes a slot gives #JKC_EIOFDRANGE for a number that is
 * not 0 to 99 and #JKC_EIONOTOPEN for a slot that is not open.
 *
 * Opening, closing and converting must not run at the same time as any judgement or conversion in the process.
 * Different slots may be read in different threads.
 */
/** @{ */

/** What the last open or file conversion did; see jkc_io_get_ope_type(). */
enum JkcOperation {
    JKC_OPERATION_NONE = 0,        /**< nothing, or it failed */
    JKC_OPERATION_COPY = 1,        /**< source and target are of one code type */
    JKC_OPERATION_ADD_MARK = 2,    /**< a byte-order mark was added */
    JKC_OPERATION_REMOVE_MARK = 3, /**< the byte-order mark was left out */
    JKC_OPERATION_CONVERT = 4      /**< any other pair */
};

/**
 * Reads a file into a free slot, converted as jkc_convert_file() does with every option off.
 *
 * @param path        the file
 * @param mode        0 or 3: lines can be read; 1 or 2: they cannot. Nothing of this layer writes into a slot.
 * @param src_type    the code type that is expected, as for jkc_convert_buffer()
 * @param dst_type    the code type in which the slot holds the text. A type that does not exist holds nothing.
 * @param source_hint not 0: take text that could be @p src_type as @p src_type, as for jkc_convert_buffer()
 * @param judged_type null, or receives what the file was judged to be; 0 on failure
 * @return the slot, to be freed with jkc_io_close(). Where several code types fit, the slot holds nothing,
 *         *judged_type is their set (64 or more) and jkc_io_is_decided() tells 0. Else a negative status:
 *         #JKC_EIOMODE for another @p mode, #JKC_EIOMAX when all slots are open, #JKC_EALLOC, #JKC_EROPEN,
 *         #JKC_EREAD (also for a directory), -1 when no code type fits, #JKC_EUEXPEOD when a character is cut
 *         off by the end of the file. The slot is free then.
 */
JKC_API int64_t jkc_io_open(const char *path, int64_t mode, int64_t src_type, int64_t dst_type, uint8_t source_hint,
                            uint64_t *judged_type);

/** Frees a slot. @return 0 */
JKC_API int64_t jkc_io_close(int64_t slot);

/** Goes back to the first line. @return 0; #JKC_EIOMODE when the slot's lines cannot be read. */
JKC_API int64_t jkc_io_rewind(int64_t slot);

/**
 * Copies the next line of a slot, without its line end: LF, CR or CR LF.
 *
 * A line longer than @p size comes in pieces, and what is cut between them is told at the jkc_*_strln() functions.
 * With jkc_io_get_size() bytes of room only a text that is itself damaged is cut. A text that ends inside a
 * character can give 0 characters and 0 bytes for ever.
 *
 * @param buf    room for @p size bytes; no NUL is added
 * @param size   0 reads nothing
 * @param length null, or receives the number of bytes copied, also with #JKC_ECHAR and #JKC_EUEXPEOD. #JKC_EOF and
 *               the refusals leave it alone, but for #JKC_ECTYPE, which stores 0.
 * @return the number of characters; #JKC_EOF behind the last line; #JKC_EIOMODE when the slot's lines cannot be
 *         read; #JKC_ECTYPE when it holds a code type without lines (#JKC_TYPE_EMPTY, #JKC_TYPE_JIS2004 and those
 *         that do not exist); #JKC_ECHAR or #JKC_EUEXPEOD where the text is not valid
 */
JKC_API int64_t jkc_io_get_line(int64_t slot, void *buf, uint64_t size, uint64_t *length);

/** @return the length of the slot's text in bytes. */
JKC_API int64_t jkc_io_get_size(int64_t slot);

/** @return the code type that the slot's file was judged to be, or the set of several. */
JKC_API int64_t jkc_io_get_stype(int64_t slot);

/** @return the code type that the slot holds its text in: @p dst_type of jkc_io_open(). */
JKC_API int64_t jkc_io_get_dtype(int64_t slot);

/** @return the errno that reading the slot's file left behind; it means something only after a failure. */
JKC_API int64_t jkc_io_get_errno(int64_t slot);

/** As jkc_get_strerror(), with the slot's context. @return the length written, without the NUL */
JKC_API int64_t jkc_io_get_strerror(int64_t slot, int64_t errnum, char *buf, uint64_t size, int64_t code_type);

/** @return 1 when slots of this open mode can be read (0 and 3), else 0. */
JKC_API int64_t jkc_io_is_can_read(int64_t mode);

/** @return 1 when this open mode asks for writing (1, 2 and 3), else 0. */
JKC_API int64_t jkc_io_is_can_write(int64_t mode);
/** @} */

/**
 * Converts one file into another, with every option off.
 *
 * The destination is made once the source is judged, so an undecided source leaves it as it is; the whole source has
 * been read by then, so both may be one file. After a failure what was written stays.
 *
 * @param src_path    the source
 * @param src_type    the code type that is expected, as for jkc_convert_buffer()
 * @param dst_path    the destination; an existing file is overwritten
 * @param dst_type    the code type wanted. For a type that does not exist the destination is left empty.
 * @param source_hint not 0: take text that could be @p src_type as @p src_type
 * @return 0; the set of code types (64 or more) when several fit; else a negative status: #JKC_ENOTEXISTS,
 *         #JKC_ENOTFILE, #JKC_EALLOC, #JKC_EROPEN, #JKC_EREAD, -1 when no code type fits, #JKC_EWOPEN,
 *         #JKC_EWRITE (also for a source judged #JKC_TYPE_JIS2004, for which no destination is made), #JKC_EUEXPEOD.
 *         An empty source gives 0 and makes no destination.
 */
JKC_API int64_t jkc_io_convert_file(const char *src_path, int64_t src_type, const char *dst_path, int64_t dst_type,
                                    uint8_t source_hint);

/**
 * Judges a file by its path.
 * @param preferred the code type that wins ties, as for jkc_judges_file()
 * @return as jkc_judges_file(); #JKC_ENOTEXISTS, #JKC_ENOTFILE when it is not a regular file, #JKC_EALLOC
 */
JKC_API int64_t jkc_io_path(const char *path, int64_t preferred);

/**
 * @return 1 when the last open or file conversion found a single code type (and, for the latter, one for which it
 *         makes a destination, and could make it), else 0
 */
JKC_API int64_t jkc_io_is_decided(void);

/**
 * @return what the last open or file conversion judged its source to be, 1 when it could not be opened; after a file
 *         conversion that failed, its result
 */
JKC_API int64_t jkc_io_get_ctype(void);

/** @return the JkcOperation of the last open or file conversion. */
JKC_API int64_t jkc_io_get_ope_type(void);

/** @name The functions on names and messages, for callers that have no context */
/** @{ */
/** As jkc_cmp_bom(). */
JKC_API int64_t jkc_io_cmp_bom(int64_t a, int64_t b);
/** As jkc_typeto_name(). */
JKC_API int64_t jkc_io_typeto_name(char *buf, int64_t code_type);
/** As jkc_nameto_type(). */
JKC_API int64_t jkc_io_nameto_type(const char *name);
/** As jkc_multi_type_names(). */
JKC_API int64_t jkc_io_multi_type_names(char *buf, uint64_t size, int64_t mask_or_type);
/** As jkc_all_type_names(). */
JKC_API int64_t jkc_io_all_type_names(char *buf, uint64_t size);
/** As jkc_all_type_names_length(). */
JKC_API int64_t jkc_io_all_type_names_length(void);
/** As jkc_statusto_message(); #JKC_EALLOC when memory is short. */
JKC_API int64_t jkc_io_statusto_message(char *buf, int64_t status, int64_t code_type);
/** @} */

/* ------------------------------------------------------------------------- */
/* Line scanners                                                             */
/* ------------------------------------------------------------------------- */

/**
 * @name Line scanners
 *
 * Each takes the next line of a text in one code type, as jkc_io_get_line() does for the text of a slot. They look at
 * the first L bytes: the smaller of @p size and @p remaining. The line ends at LF, CR, or CR LF when both lie within L,
 * and at L itself. Its line end is neither copied nor counted.
 *
 * What is cut by L, or by the end of the text:
 * - a CR LF: the LF is the empty line that follows;
 * - a Shift_JIS or EUC character: it waits for the next call, so that a buffer too small for it gives 0 for ever;
 * - a UTF-16 pair behind two or more units of the line: it waits, together with the unit in front of it;
 * - a UTF-8 character: its first two or three bytes are copied and not counted; a lead byte alone waits;
 * - a JIS pair: its first byte is copied and the result is #JKC_EUEXPEOD.
 *
 * A byte-order mark in front of a UTF-16 or UTF-8 line is copied and not counted; so are the escape sequences and the
 * shift bytes SO and SI of JIS.
 *
 * @param ctx       the context: its sts receives the status, its source tables tell what is valid Shift_JIS
 * @param buf       room for @p size bytes; no NUL is added
 * @param size      0 reads nothing
 * @param length    receives the number of bytes copied: those from the old position on
 * @param position  the text; moved behind the line and its line end
 * @param remaining bytes of text at *position
 * @return the number of characters (a line must have less than 2^31), or #JKC_ECHAR where the text is not valid:
 *         the bytes before are copied, and the position stands behind the lead byte of a Shift_JIS or EUC character with
 *         a wrong trail byte, behind two bytes or four of a UTF-8 character, and otherwise at the bad byte (where the next
 *         call fails again). UTF-16 is always valid.
 */
/** @{ */
JKC_API int32_t jkc_sjis_strln(JkcContext *ctx, void *buf, uint64_t size, uint64_t *length, const uint8_t **position,
                               uint64_t remaining);
JKC_API int32_t jkc_euc_strln(JkcContext *ctx, void *buf, uint64_t size, uint64_t *length, const uint8_t **position,
                              uint64_t remaining);
JKC_API int32_t jkc_unibe_strln(JkcContext *ctx, void *buf, uint64_t size, uint64_t *length, const uint8_t **position,
                                uint64_t remaining);
JKC_API int32_t jkc_unile_strln(JkcContext *ctx, void *buf, uint64_t size, uint64_t *length, const uint8_t **position,
                                uint64_t remaining);
JKC_API int32_t jkc_utf8_strln(JkcContext *ctx, void *buf, uint64_t size, uint64_t *length, const uint8_t **position,
                               uint64_t remaining);
/**
 * @param shift_state the character set in force, a designation number: 0 in front of the first line; receives that
 *                    at the new position. A designation of JIS X 0213 also selects its table in the context.
 */
JKC_API int32_t jkc_jis_strln(JkcContext *ctx, void *buf, uint64_t size, uint64_t *length, const uint8_t **position,
                              uint64_t remaining, uint32_t *shift_state);
/** @} */

/* ------------------------------------------------------------------------- */
/* Second tier: internal routines and data, exported as they are             */
/* ------------------------------------------------------------------------- */

#ifdef JKC_INTERNAL_API

/* --- record list: owned copies of records; handed around by its first node --- */

/** Header of a list. */
typedef struct JkcListHeader {
    uint32_t count;            /**< records held */
    struct JkcListNode *first; /**< the node that always exists */
    struct JkcListNode *last;  /**< the first node while the list is empty */
} JkcListHeader;

/** A node. An empty list is one node whose data is null. */
typedef struct JkcListNode {
    void *data;               /**< the list's own copy of the record */
    struct JkcListNode *prev; /**< null at the first node */
    struct JkcListNode *next; /**< null at the last node */
    struct JkcListHeader *header;
} JkcListNode;

/** @return the first node of a new list; null when memory is short. */
JKC_API JkcListNode *ll_create(void);
/** Copies a record in behind @p node (into it, when it is empty). @return its node; null when memory is short. */
JKC_API JkcListNode *ll_add(JkcListNode *node, const void *record, size_t size);
/** Frees every record. @param list any node of the list; its first node stays. @return the header. */
JKC_API JkcListHeader *ll_clear(JkcListNode *list);
/** Frees the list and sets *list_ref to null. A null *list_ref does nothing. */
JKC_API void ll_release(JkcListNode **list_ref);
/** Removes one record. @return the node behind it, or else the one before it. */
JKC_API JkcListNode *ll_delete(JkcListNode *node);
/** Overwrites a record, which must hold @p size bytes. @return the node; null when it holds none. */
JKC_API JkcListNode *ll_replace(JkcListNode *node, const void *record, size_t size);

/* --- input blocks --- */

/** Sizes of an input block, in bytes. */
enum JkcBlockSizes {
    JKC_BLOCK_HEADROOM = 32, /**< free room in front of the data, for what the last block leaves over */
    JKC_BLOCK_READ = 8128,   /**< bytes read at a time */
    JKC_BLOCK_AREA = 8192    /**< the data area; also the room for pending output */
};

/** A piece of the input. */
typedef struct JkcBlock {
    uint8_t data[JKC_BLOCK_AREA];
    int32_t start;         /**< offset of the first byte in data; 32 when read */
    int32_t end;           /**< offset one past the last byte */
    int32_t reserved;      /**< 0 */
    int32_t scan_start[4]; /**< where the scanners begin: 7-bit and Shift_JIS, EUC, UTF-16, UTF-8 */
} JkcBlock;

/** The one block in which input is read, and in which output gathers: the reason for "one at a time". */
JKC_API extern JkcBlock _buffser_info;

/** Reads the rest of the source into ctx->blocks; for the Unicode code types also sets the two flags. */
JKC_API int _fill_buffer(JkcContext *ctx, int code_type);
/** @return @p bits with the line ends of ctx->blocks ORed in; #JKC_ECTYPE for a value above 63. */
JKC_API int _check_ln(JkcContext *ctx, int bits, int code_type);
/** Orders two pointers to the judgement's candidate records, best first (for qsort). */
JKC_API int _tcompare(const void *a, const void *b);
/** The judgement itself, on the source that the context is set to. */
JKC_API int _jkc_judges(JkcContext *ctx, int *type_out, int *line_out, int preferred, bool plain_is_preferred,
                        bool keep_blocks);

/* --- driver --- */

/** Judges and converts the source that the context is set to. */
JKC_API int32_t _jkc_convert(JkcContext *ctx, int32_t src_type, int32_t dst_type, bool source_hint);
/** Recodes a UTF-8 text of @p len bytes in place, for code types 2, 4 and 5 only; at most 255 bytes result. */
JKC_API int32_t _convert_buf(JkcContext *ctx, char *text, uint64_t len, int32_t dst_type);
/** Gathers what _convert_buf() converts. */
JKC_API int32_t _convert_buf_writer(const uint8_t *data, uint64_t len);
/** Copies ctx->blocks in one code type: line ends apart, byte for byte. */
JKC_API int32_t _jkc_copy(JkcContext *ctx, int32_t code_type);
/** Copies ctx->blocks behind the byte-order mark of code type 12, 14 or 16. */
JKC_API int32_t _add_bom(JkcContext *ctx, int32_t dst_type);
/** Copies ctx->blocks into code type 11, 13 or 15. */
JKC_API int32_t _delete_bom(JkcContext *ctx, int32_t dst_type);

/* --- converters: ctx->blocks to ctx->writer, with the tables selected in the context --- */

JKC_API int32_t _jisto_jis(JkcContext *ctx);
JKC_API int32_t _jisto_sjis(JkcContext *ctx);
JKC_API int32_t _jisto_euc(JkcContext *ctx);
JKC_API int32_t _jisto_unibe(JkcContext *ctx, bool add_bom);
JKC_API int32_t _jisto_unile(JkcContext *ctx, bool add_bom);
JKC_API int32_t _jisto_utf8(JkcContext *ctx, bool add_bom);
JKC_API int32_t _sjisto_jis(JkcContext *ctx);
JKC_API int32_t _sjisto_euc(JkcContext *ctx);
JKC_API int32_t _sjisto_unibe(JkcContext *ctx, bool add_bom);
JKC_API int32_t _sjisto_unile(JkcContext *ctx, bool add_bom);
JKC_API int32_t _sjisto_utf8(JkcContext *ctx, bool add_bom);
JKC_API int32_t _eucto_jis(JkcContext *ctx);
JKC_API int32_t _eucto_sjis(JkcContext *ctx);
JKC_API int32_t _eucto_euc(JkcContext *ctx);
JKC_API int32_t _eucto_unibe(JkcContext *ctx, bool add_bom);
JKC_API int32_t _eucto_unile(JkcContext *ctx, bool add_bom);
JKC_API int32_t _eucto_utf8(JkcContext *ctx, bool add_bom);
JKC_API int32_t _unibeto_jis(JkcContext *ctx);
JKC_API int32_t _unibeto_sjis(JkcContext *ctx);
JKC_API int32_t _unibeto_euc(JkcContext *ctx);
JKC_API int32_t _unibeto_unibe(JkcContext *ctx, bool add_bom);
JKC_API int32_t _unibeto_unile(JkcContext *ctx, bool add_bom);
JKC_API int32_t _unibeto_utf8(JkcContext *ctx, bool add_bom);
JKC_API int32_t _unileto_jis(JkcContext *ctx);
JKC_API int32_t _unileto_sjis(JkcContext *ctx);
JKC_API int32_t _unileto_euc(JkcContext *ctx);
JKC_API int32_t _unileto_unibe(JkcContext *ctx, bool add_bom);
JKC_API int32_t _unileto_unile(JkcContext *ctx, bool add_bom);
JKC_API int32_t _unileto_utf8(JkcContext *ctx, bool add_bom);
JKC_API int32_t _utf8to_jis(JkcContext *ctx);
JKC_API int32_t _utf8to_sjis(JkcContext *ctx);
JKC_API int32_t _utf8to_euc(JkcContext *ctx);
JKC_API int32_t _utf8to_unibe(JkcContext *ctx, bool add_bom);
JKC_API int32_t _utf8to_unile(JkcContext *ctx, bool add_bom);
JKC_API int32_t _utf8to_utf8(JkcContext *ctx, bool add_bom);

/* --- names and messages --- */

/** A code type's name. */
typedef struct JkcTypeName {
    uint32_t mask;    /**< its bit in the sets of jkc_multi_type_names(); 0: none */
    int32_t type;     /**< the code type */
    const char *name; /**< ASCII, in upper case but for row 0 */
} JkcTypeName;

/** A status code's message. */
typedef struct JkcStatusMessage {
    int64_t status;      /**< the low 32 bits hold the JkcStatus, the high ones are 0 */
    const char *message; /**< UTF-8 */
} JkcStatusMessage;

JKC_API extern const JkcTypeName _typeNames[];
JKC_API extern const uint64_t _typeNamesSize;
JKC_API extern const JkcStatusMessage _satusMessage[];
JKC_API extern const uint64_t _satusMessageSize;

/* --- file slots --- */

/** A slot. It is free when data is null. */
typedef struct FileSlot {
    JkcContext *context;    /**< the slot's own */
    uint8_t *data;          /**< the converted text */
    uint64_t size;          /**< its length in bytes */
    uint64_t capacity;      /**< bytes allocated for it */
    uint8_t *read_position; /**< where the next line begins */
    uint64_t mode;          /**< open mode, 0 to 3 */
    uint64_t src_type;      /**< code type that was judged */
    uint64_t dst_type;      /**< code type that the text is in */
    uint32_t jis_state;     /**< shift state at read_position */
} FileSlot;

/** The slot that is being filled; -1 when none was free. */
JKC_API extern int64_t _fd;
/** Destination of the running file conversion. */
JKC_API extern const char *_dpath;
/** Its stream; null until the source is judged. Closed, but not cleared, at the end. */
JKC_API extern FILE *_dfp;

/** @return the first free slot; -1 when all are open. */
JKC_API int64_t _getTIO(void);
/** @return the context of an open slot; else null. */
JKC_API JkcContext *_get_jkc(int64_t slot);
/** @return 0 when there is nothing at @p path, 1 for a directory, 2 for a regular file, 9 for anything else. */
JKC_API int32_t __check_stat(const char *path);
/** Notes what the file was judged to be in slot _fd. @return 0; -1 when several code types fit. */
JKC_API int32_t _io_fd_buf_observer(int32_t code_type, void *user_data);
/** Appends to the text of slot _fd. @return 0; #JKC_EALLOC */
JKC_API int32_t _io_fd_buf_writer(const uint8_t *data, uint64_t length, void *user_data);
/** Opens _dpath for a source of a single code type. @return 0; -1 when several fit or it cannot be opened. */
JKC_API int32_t _io_observer(int32_t code_type, void *user_data);
/** Writes to _dfp. @return 0; #JKC_EWRITE */
JKC_API int32_t _io_writer(const uint8_t *data, uint64_t length, void *user_data);

/* --- mapping tables: indexed by code; 0 is "no mapping"; each _size counts entries --- */

/** @name From Unicode, indexed by code point (from U+20000 on in the _srg tables) */
/** @{ */
JKC_API extern const uint16_t _unibe2sjis932_table[];
JKC_API extern const uint64_t _unibe2sjis932_table_size;
JKC_API extern const uint16_t _unibe2jis50221_table[];
JKC_API extern const uint64_t _unibe2jis50221_table_size;
JKC_API extern const uint8_t _unibe2jis50221_table_bits[];
JKC_API extern const uint64_t _unibe2jis50221_table_bits_size;
JKC_API extern const uint16_t _unibe2jis2022jp2004_table[];
JKC_API extern const uint64_t _unibe2jis2022jp2004_table_size;
JKC_API extern const uint8_t _unibe2jis2022jp2004_table_bits[];
JKC_API extern const uint64_t _unibe2jis2022jp2004_table_bits_size;
JKC_API extern const uint16_t _unibe2jis2022jp2004_table_srg[];
JKC_API extern const uint64_t _unibe2jis2022jp2004_table_srg_size;
JKC_API extern const uint8_t _unibe2jis2022jp2004_table_srg_bits[];
JKC_API extern const uint64_t _unibe2jis2022jp2004_table_srg_bits_size;
JKC_API extern const uint64_t _unibe2jis2022jp2004_table_srg_bits_offset; /**< 11808; nothing reads it */
JKC_API extern const uint16_t _unibe2euccommon_table[];
JKC_API extern const uint64_t _unibe2euccommon_table_size;
JKC_API extern const uint16_t _unibe2euc51932_table[];
JKC_API extern const uint64_t _unibe2euc51932_table_size;
JKC_API extern const uint32_t _unibe2euc20932_table[];
JKC_API extern const uint64_t _unibe2euc20932_table_size;
JKC_API extern const uint32_t _unibe2eucms_table[];
JKC_API extern const uint64_t _unibe2eucms_table_size;
JKC_API extern const uint16_t _unibe_def_table[];
JKC_API extern const uint64_t _unibe_def_table_size;
/** @} */

/** @name To Unicode, indexed by code. The two-byte tables can be read up to index 65535. */
/** @{ */
JKC_API extern const uint16_t _sjis2unibe932_table[];
JKC_API extern const uint64_t _sjis2unibe932_table_size;
JKC_API extern const uint16_t _jis2unibe50221_table[];
JKC_API extern const uint64_t _jis2unibe50221_table_size;
JKC_API extern const uint32_t _jis2unibe2022jp2004_table01[];
JKC_API extern const uint64_t _jis2unibe2022jp2004_table01_size;
JKC_API extern const uint32_t _jis2unibe2022jp2004_table02[];
JKC_API extern const uint64_t _jis2unibe2022jp2004_table02_size;
JKC_API extern const uint64_t _jis2unibe2022jp2004_table02_offset; /**< 8480: JIS code of entry 0 */
JKC_API extern const uint16_t _euc2unibecommon_table00[];
JKC_API extern const uint64_t _euc2unibecommon_table00_size;
JKC_API extern const uint16_t _euc2unibe20932_table00[];
JKC_API extern const uint64_t _euc2unibe20932_table00_size;
JKC_API extern const uint16_t _euc2unibe20932_table8f[];
JKC_API extern const uint64_t _euc2unibe20932_table8f_size;
JKC_API extern const uint16_t _euc2unibe51932_table00[];
JKC_API extern const uint64_t _euc2unibe51932_table00_size;
JKC_API extern const uint16_t _euc2unibems_table00[];
JKC_API extern const uint64_t _euc2unibems_table00_size;
JKC_API extern const uint16_t _euc2unibems_table8f[];
JKC_API extern const uint64_t _euc2unibems_table8f_size;
/** @} */

#endif /* JKC_INTERNAL_API */

#ifdef __cplusplus
}
#endif

#endif /* JKC_H */
