// The charts of the character sets, from which all tables are made.
#pragma once

#include "tables/chart.h"

namespace jkc::tables {

// JIS codes.
constexpr ChartLine kJisX0208[] = {
#include "tables/data/jisx0208.inc"
};
constexpr ChartLine kJisX0212[] = {
#include "tables/data/jisx0212.inc"
};
constexpr ChartLine kJisX0213Plane1[] = {
#include "tables/data/jisx0213_plane1.inc"
};
constexpr ChartLine kJisX0213Plane2[] = {
#include "tables/data/jisx0213_plane2.inc"
};
constexpr ChartLine kNecRow13[] = {
#include "tables/data/nec_row13.inc"
};
constexpr ChartLine kEucJpMsIbmRows[] = {
#include "tables/data/eucjp_ms_ibm_rows.inc"
};

// Shift_JIS codes.
constexpr ChartLine kIbmExtension[] = {
#include "tables/data/ibm_extension.inc"
};

} // namespace jkc::tables
