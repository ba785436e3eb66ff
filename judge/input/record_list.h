// The list of owned records, for what fills a record in place.
#pragma once

#include "core/internal.h"

namespace jkc {

// As ll_add(), but what the new record holds is undefined. It is the one of the node that is returned.
JkcListNode *add_record(JkcListNode *node, size_t size);

} // namespace jkc
