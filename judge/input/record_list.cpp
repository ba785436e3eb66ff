// The doubly linked list of owned records that holds the input blocks.
#include <cstdlib>
#include <cstring>

#include "judge/input/record_list.h"

JkcListNode *ll_create() {
    auto *node = static_cast<JkcListNode *>(calloc(1, sizeof(JkcListNode)));
    auto *header = static_cast<JkcListHeader *>(calloc(1, sizeof(JkcListHeader)));
    if (node == nullptr || header == nullptr) {
        free(node);
        free(header);
        return nullptr;
    }
    header->first = node;
    header->last = node;
    node->header = header;
    return node;
}

JkcListNode *ll_add(JkcListNode *node, const void *record, size_t size) {
    JkcListNode *added = jkc::add_record(node, size);
    if (added != nullptr) {
        memcpy(added->data, record, size);
    }
    return added;
}

JkcListNode *jkc::add_record(JkcListNode *node, size_t size) {
    void *data = malloc(size);
    if (data == nullptr) {
        return nullptr;
    }
    JkcListHeader *header = node->header;
    if (node->data == nullptr) {
        node->data = data;
        ++header->count;
        return node;
    }
    auto *added = static_cast<JkcListNode *>(calloc(1, sizeof(JkcListNode)));
    if (added == nullptr) {
        free(data);
        return nullptr;
    }
    added->data = data;
    added->header = header;
    added->prev = node;
    added->next = node->next;
    if (node->next != nullptr) {
        node->next->prev = added;
    }
    node->next = added;
    if (header->last == node) {
        header->last = added;
    }
    ++header->count;
    return added;
}

JkcListHeader *ll_clear(JkcListNode *list) {
    JkcListHeader *header = list->header;
    JkcListNode *first = header->first;
    for (JkcListNode *node = first->next; node != nullptr;) {
        JkcListNode *next = node->next;
        free(node->data);
        free(node);
        node = next;
    }
    free(first->data);
    first->data = nullptr;
    first->next = nullptr;
    header->count = 0;
    header->last = first;
    return header;
}

void ll_release(JkcListNode **list_ref) {
    if (*list_ref == nullptr) {
        return;
    }
    JkcListHeader *header = ll_clear(*list_ref);
    free(header->first);
    free(header);
    *list_ref = nullptr;
}

JkcListNode *ll_delete(JkcListNode *node) {
    if (node->data == nullptr) {
        return node;
    }
    free(node->data);
    node->data = nullptr;
    JkcListHeader *header = node->header;
    --header->count;
    JkcListNode *neighbour = node->next != nullptr ? node->next : node->prev;
    if (neighbour == nullptr) {
        return node; // the last record of a list: its node stays
    }
    if (node->prev != nullptr) {
        node->prev->next = node->next;
    } else {
        header->first = node->next;
    }
    if (node->next != nullptr) {
        node->next->prev = node->prev;
    } else {
        header->last = node->prev;
    }
    free(node);
    return neighbour;
}

JkcListNode *ll_replace(JkcListNode *node, const void *record, size_t size) {
    if (node->data == nullptr) {
        return nullptr;
    }
    memcpy(node->data, record, size);
    return node;
}
