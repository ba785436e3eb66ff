/* What is better done in C than by calls from Python: compiled into jkc._native. */
#include <jkc.h>
#include <stdlib.h>

/* Python sees: */
/** Losses as an observer collects them. All 0 but `limit` at first; `items` is to be freed with jkc_native_free(). */
typedef struct JkcLossList {
    JkcLoss *items;
    size_t count;
    size_t capacity;
    size_t limit; /* how many are kept */
    uint64_t total; /* how many there were */
} JkcLossList;

int32_t jkc_native_collect(const JkcLoss *loss, void *list);
void jkc_native_free(void *memory);
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
