// Each puts the mapping tables of one code type into a context; the registry of code types knows which one.
#pragma once

#include "core/internal.h"

namespace jkc {

void select_jis_cp50221_source(JkcContext &ctx);
void select_jis_2004_source(JkcContext &ctx);
void select_euc_source(JkcContext &ctx);
void select_euc_20932_source(JkcContext &ctx);
void select_euc_51932_source(JkcContext &ctx);
void select_euc_ms_source(JkcContext &ctx);

void select_jis_target(JkcContext &ctx);
void select_jis_2004_target(JkcContext &ctx);
void select_euc_target(JkcContext &ctx);
void select_euc_20932_target(JkcContext &ctx);
void select_euc_51932_target(JkcContext &ctx);
void select_euc_ms_target(JkcContext &ctx);

} // namespace jkc
