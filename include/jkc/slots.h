/**
 * @file jkc/slots.h
 * @brief Files held converted in memory and read line by line; one file converted into another. Part of jkc.h.
 *
 * A slot holds a whole file, converted. 100 of them, numbered from 0, exist in the process; jkc_io_open() fills one,
 * jkc_io_get_line() reads it, jkc_io_close() frees it. No context and no callbacks are needed.
 *
 * All results are 64 bits wide. Each function that takes a slot gives #JKC_EIOFDRANGE for a number that is not 0 to 99
 * and #JKC_EIONOTOPEN for a slot that is not open.
 *
 * Names of files are UTF-8 on Windows, and elsewhere bytes as the system takes them.
 *
 * Threads: slots may be opened, and different slots read and closed, in any number of threads at once, beside whatever
 * else the library does. One slot is used by one thread at a time.
 */
#ifndef JKC_SLOTS_H
#define JKC_SLOTS_H

#include "../jkc.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name Slots */
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
 *         #JKC_EREAD (also for a directory; on Windows #JKC_EROPEN), -1 when no code type fits, #JKC_EUEXPEOD when a character is cut
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
 * @name Whole files. Threads: any number at once, each with a destination of its own.
 *
 * jkc_io_is_decided(), jkc_io_get_ctype() and jkc_io_get_ope_type() tell of the last open or file conversion of the whole
 * process. They may be called at any time, but where others open or convert meanwhile, each may tell of another one: what
 * jkc_io_open() answers and stores, jkc_io_get_stype() and the result of jkc_io_convert_file() are the caller's own.
 */
/** @{ */
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
/** @} */

/** @name Names and messages, as in jkc.h, with 64 bits and no context. Threads: any. */
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

#ifdef __cplusplus
}
#endif

#endif /* JKC_SLOTS_H */
