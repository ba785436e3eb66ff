// What every part of the library includes: the public header with its second tier.
#pragma once

#ifndef JKC_INTERNAL_API
#define JKC_INTERNAL_API
#endif
#include "jkc.h"
