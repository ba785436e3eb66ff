// What every part of the library includes: the public headers.
#pragma once

#include "jkc.h"
#include "jkc/internal.h"
