/**
 * @file jkc/internal.h
 * @brief What the library does inside: blocks, judgement, driver, converters, file slots. Not part of jkc.h.
 *
 * These names are exported as they are and part of the ABI, for programs that link to them. Code that wants a text
 * judged or converted needs none of them.
 *
 * Threads: the functions run in any number of threads at once, each with a context of its own. The variables are shared:
 * the library writes some, as told there, so that a program with several threads has no use for them.
 */
#ifndef JKC_INTERNAL_H
#define JKC_INTERNAL_H

#include "../jkc.h"

#ifdef __cplusplus
extern "C" {
#endif

/* --- input blocks --- */

/** Sizes of an input block, in bytes. */
enum JkcBlockSizes {
    JKC_BLOCK_HEADROOM = 32, /**< free room in front of the data, for what the last block leaves over */
    JKC_BLOCK_READ = 8128,   /**< bytes read at a time */
    JKC_BLOCK_AREA = 8192    /**< the data area; also the room for pending output */
};

/** A piece of the input. */
typedef struct JkcBlock {
    uint8_t data[JKC_BLOCK_AREA]; /**< the bytes, with room in front */
    int32_t start;                /**< offset of the first byte in data; 32 when read */
    int32_t end;                  /**< offset one past the last byte */
    int32_t reserved;             /**< 0 */
    int32_t scan_start[4];        /**< where the scanners begin: 7-bit and Shift_JIS, EUC, UTF-16, UTF-8 */
} JkcBlock;

/**
 * In which input is read, and in which output gathers, for the first of the running calls that needs it. The others
 * allocate one each, and answer #JKC_EALLOC when memory is short.
 */
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
/** Outside a _convert_buf(), each of which gathers in an area of its own, there is no room: #JKC_EWRITE. */
JKC_API int32_t _convert_buf_writer(const uint8_t *data, uint64_t len);
/** Copies ctx->blocks in one code type: line ends apart, byte for byte. */
JKC_API int32_t _jkc_copy(JkcContext *ctx, int32_t code_type);
/** Copies ctx->blocks behind the byte-order mark of code type 12, 14 or 16. */
JKC_API int32_t _add_bom(JkcContext *ctx, int32_t dst_type);
/** Copies ctx->blocks into code type 11, 13 or 15. */
JKC_API int32_t _delete_bom(JkcContext *ctx, int32_t dst_type);

/* --- converters: ctx->blocks to ctx->writer, with the tables selected in the context --- */

/**
 * The converters. Those to a Unicode form are told whether to begin with a byte-order mark:
 *
 *     int32_t NAME(JkcContext *ctx);                 to JIS, Shift_JIS, EUC
 *     int32_t NAME(JkcContext *ctx, bool add_bom);   to UTF-16BE, UTF-16LE, UTF-8
 *
 *     from \ to  JIS          Shift_JIS     EUC          UTF-16BE       UTF-16LE       UTF-8
 *     JIS        _jisto_jis   _jisto_sjis   _jisto_euc   _jisto_unibe   _jisto_unile   _jisto_utf8
 *     Shift_JIS  _sjisto_jis                _sjisto_euc  _sjisto_unibe  _sjisto_unile  _sjisto_utf8
 *     EUC        _eucto_jis   _eucto_sjis   _eucto_euc   _eucto_unibe   _eucto_unile   _eucto_utf8
 *     UTF-16BE   _unibeto_jis _unibeto_sjis _unibeto_euc _unibeto_unibe _unibeto_unile _unibeto_utf8
 *     UTF-16LE   _unileto_jis _unileto_sjis _unileto_euc _unileto_unibe _unileto_unile _unileto_utf8
 *     UTF-8      _utf8to_jis  _utf8to_sjis  _utf8to_euc  _utf8to_unibe  _utf8to_unile  _utf8to_utf8
 *
 * JKC_FOR_EACH_CONVERTER(TO_LEGACY, TO_UNICODE) expands to TO_LEGACY(source, target) or TO_UNICODE(source, target) for
 * each, row by row; JKC_CONVERTERS_FROM_jis() and so on do for one row. JKC_CONVERTER(source, target) is the name.
 */
#define JKC_FOR_EACH_CONVERTER(TO_LEGACY, TO_UNICODE)                                                                  \
    JKC_CONVERTERS_FROM_jis(TO_LEGACY, TO_UNICODE) JKC_CONVERTERS_FROM_sjis(TO_LEGACY, TO_UNICODE)                     \
        JKC_CONVERTERS_FROM_euc(TO_LEGACY, TO_UNICODE) JKC_CONVERTERS_FROM_unibe(TO_LEGACY, TO_UNICODE)                \
            JKC_CONVERTERS_FROM_unile(TO_LEGACY, TO_UNICODE) JKC_CONVERTERS_FROM_utf8(TO_LEGACY, TO_UNICODE)

/** @cond */
#define JKC_CONVERTERS_FROM_jis(TO_LEGACY, TO_UNICODE) JKC_CONVERTERS_FROM(jis, TO_LEGACY, TO_UNICODE)
/* Shift_JIS has one form only, so that it is copied into itself, never converted. */
#define JKC_CONVERTERS_FROM_sjis(TO_LEGACY, TO_UNICODE)                                                                \
    TO_LEGACY(sjis, jis) TO_LEGACY(sjis, euc) JKC_CONVERTERS_TO_UNICODE(sjis, TO_UNICODE)
#define JKC_CONVERTERS_FROM_euc(TO_LEGACY, TO_UNICODE) JKC_CONVERTERS_FROM(euc, TO_LEGACY, TO_UNICODE)
#define JKC_CONVERTERS_FROM_unibe(TO_LEGACY, TO_UNICODE) JKC_CONVERTERS_FROM(unibe, TO_LEGACY, TO_UNICODE)
#define JKC_CONVERTERS_FROM_unile(TO_LEGACY, TO_UNICODE) JKC_CONVERTERS_FROM(unile, TO_LEGACY, TO_UNICODE)
#define JKC_CONVERTERS_FROM_utf8(TO_LEGACY, TO_UNICODE) JKC_CONVERTERS_FROM(utf8, TO_LEGACY, TO_UNICODE)

#define JKC_CONVERTERS_FROM(source, TO_LEGACY, TO_UNICODE)                                                             \
    TO_LEGACY(source, jis) TO_LEGACY(source, sjis) TO_LEGACY(source, euc) JKC_CONVERTERS_TO_UNICODE(source, TO_UNICODE)
#define JKC_CONVERTERS_TO_UNICODE(source, TO_UNICODE)                                                                  \
    TO_UNICODE(source, unibe) TO_UNICODE(source, unile) TO_UNICODE(source, utf8)

#define JKC_CONVERTER(source, target) _##source##to_##target

#define JKC_DECLARE_TO_LEGACY(source, target) JKC_API int32_t JKC_CONVERTER(source, target)(JkcContext * ctx);
#define JKC_DECLARE_TO_UNICODE(source, target)                                                                         \
    JKC_API int32_t JKC_CONVERTER(source, target)(JkcContext * ctx, bool add_bom);
JKC_FOR_EACH_CONVERTER(JKC_DECLARE_TO_LEGACY, JKC_DECLARE_TO_UNICODE)
#undef JKC_DECLARE_TO_LEGACY
#undef JKC_DECLARE_TO_UNICODE
/** @endcond */

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

JKC_API extern const JkcTypeName _typeNames[];         /**< the names of the code types */
JKC_API extern const uint64_t _typeNamesSize;          /**< how many there are */
JKC_API extern const JkcStatusMessage _satusMessage[]; /**< the messages of the status codes */
JKC_API extern const uint64_t _satusMessageSize;       /**< how many there are */

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

/** The slot that was filled last, or is being filled; -1 when none was free. */
JKC_API extern int64_t _fd;
/** Destination of the last file conversion, or the running one. */
JKC_API extern const char *_dpath;
/** Its stream; null until the source is judged. Closed, but not cleared, at the end. */
JKC_API extern FILE *_dfp;

/** @return the first free slot; -1 when all are open. */
JKC_API int64_t _getTIO(void);
/** @return the context of an open slot; else null. */
JKC_API JkcContext *_get_jkc(int64_t slot);
/** @return 0 when there is nothing at @p path, 1 for a directory, 2 for a regular file, 9 for anything else. */
JKC_API int32_t __check_stat(const char *path);
/* For programs that set these variables and run a conversion of their own; the calls above only write them. Threads: one
   at a time. */
/** Notes what the file was judged to be in slot _fd. @return 0; -1 when several code types fit. */
JKC_API int32_t _io_fd_buf_observer(int32_t code_type, void *user_data);
/** Appends to the text of slot _fd. @return 0; #JKC_EALLOC */
JKC_API int32_t _io_fd_buf_writer(const uint8_t *data, uint64_t length, void *user_data);
/** Opens _dpath for a source of a single code type. @return 0; -1 when several fit or it cannot be opened. */
JKC_API int32_t _io_observer(int32_t code_type, void *user_data);
/** Writes to _dfp. @return 0; #JKC_EWRITE */
JKC_API int32_t _io_writer(const uint8_t *data, uint64_t length, void *user_data);

#ifdef __cplusplus
}
#endif

#endif /* JKC_INTERNAL_H */
