/**
 * @file jkc/lines.h
 * @brief Scanners that take a text in memory apart into lines, and the list that keeps records. Part of jkc.h.
 */
#ifndef JKC_LINES_H
#define JKC_LINES_H

#include "../jkc.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @name Line scanners. Threads: any number at once, each with a context of its own.
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
/** Scans a line of Shift_JIS. */
JKC_API int32_t jkc_sjis_strln(JkcContext *ctx, void *buf, uint64_t size, uint64_t *length, const uint8_t **position,
                               uint64_t remaining);
/** Scans a line of EUC. */
JKC_API int32_t jkc_euc_strln(JkcContext *ctx, void *buf, uint64_t size, uint64_t *length, const uint8_t **position,
                              uint64_t remaining);
/** Scans a line of UTF-16BE. */
JKC_API int32_t jkc_unibe_strln(JkcContext *ctx, void *buf, uint64_t size, uint64_t *length, const uint8_t **position,
                                uint64_t remaining);
/** Scans a line of UTF-16LE. */
JKC_API int32_t jkc_unile_strln(JkcContext *ctx, void *buf, uint64_t size, uint64_t *length, const uint8_t **position,
                                uint64_t remaining);
/** Scans a line of UTF-8. */
JKC_API int32_t jkc_utf8_strln(JkcContext *ctx, void *buf, uint64_t size, uint64_t *length, const uint8_t **position,
                               uint64_t remaining);
/**
 * Scans a line of JIS.
 * @param shift_state the character set in force, a designation number: 0 in front of the first line; receives that
 *                    at the new position. A designation of JIS X 0213 also selects its table in the context.
 */
JKC_API int32_t jkc_jis_strln(JkcContext *ctx, void *buf, uint64_t size, uint64_t *length, const uint8_t **position,
                              uint64_t remaining, uint32_t *shift_state);
/** @} */

/** @name Record list: owned copies of records. Threads: any number at once, each with a list of its own. */
/** @{ */
/** Header of a list. */
typedef struct JkcListHeader {
    uint32_t count;            /**< records held */
    struct JkcListNode *first; /**< the node that always exists */
    struct JkcListNode *last;  /**< the first node while the list is empty */
} JkcListHeader;

/** A node. An empty list is one node whose data is null. */
typedef struct JkcListNode {
    void *data;                   /**< the list's own copy of the record */
    struct JkcListNode *prev;     /**< null at the first node */
    struct JkcListNode *next;     /**< null at the last node */
    struct JkcListHeader *header; /**< of the list that it belongs to */
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
/** @} */

#ifdef __cplusplus
}
#endif

#endif /* JKC_LINES_H */
