/* What is better done in C than by calls from Python: compiled into jkc._native. */
#include <jkc.h>
#include <stdlib.h>

/* Python sees: */
/** Losses as an observer collects them. All 0 but `limit` at first; `items` is to be freed with jkc_native_free(). */
typedef struct JkcLossList {
    JkcLoss *items;
    size_t count;
    size_t capacity;
    size_t limit;   /* how many are kept */
    uint64_t total; /* how many there were */
} JkcLossList;

int32_t jkc_native_collect(const JkcLoss *loss, void *list);
void jkc_native_free(void *memory);

/** What came of jkc_native_convert(). */
typedef struct JkcPiece {
    size_t written; /* bytes of output, with what the front became */
    size_t offset;  /* where the last loss stands in the data; where nothing was lost, the end */
    uint32_t length;
    int32_t kind; /* a JkcLossKind; 0: nothing was lost */
} JkcPiece;

void jkc_native_convert(JkcConverter *converter, const uint8_t *front, size_t front_length, const uint8_t *data,
                        size_t begin, size_t end, uint8_t *out, size_t room, JkcPiece *piece);
/* Python sees no more. */

/* A JkcLossObserver whose data is a JkcLossList. */
int32_t jkc_native_collect(const JkcLoss *loss, void *data) {
    JkcLossList *list = (JkcLossList *)data;
    ++list->total;
    if (list->count == list->limit) {
        return JKC_SUCCESS;
    }
    if (list->count == list->capacity) {
        const size_t capacity = list->capacity == 0 ? 16 : list->capacity * 2;
        JkcLoss *items = (JkcLoss *)realloc(list->items, capacity * sizeof *items);
        if (items == NULL) {
            return JKC_EALLOC;
        }
        list->items = items;
        list->capacity = capacity;
    }
    list->items[list->count++] = *loss;
    return JKC_SUCCESS;
}

void jkc_native_free(void *memory) { free(memory); }

/*
 * Converts the data from `begin` to `end`, or to where the converter stops, as a text with a front of which nothing is lost.
 * There must be room for the output.
 */
void jkc_native_convert(JkcConverter *converter, const uint8_t *front, size_t front_length, const uint8_t *data,
                        size_t begin, size_t end, uint8_t *out, size_t room, JkcPiece *piece) {
    uint8_t *out_end = out;
    const uint8_t *p = data + begin;
    const size_t before = front_length;
    size_t left = end - begin;
    JkcConverterLosses losses;
    jkc_converter_reset(converter);
    if (front_length > 0) {
        jkc_converter_run(converter, &front, &front_length, &out_end, &room, false);
    }
    jkc_converter_run(converter, &p, &left, &out_end, &room, true);
    losses.size = sizeof losses;
    jkc_converter_losses(converter, &losses);
    piece->written = (size_t)(out_end - out);
    piece->offset = losses.last.kind != 0 ? begin + (size_t)losses.last.offset - before : end;
    piece->length = losses.last.length;
    piece->kind = losses.last.kind;
}
