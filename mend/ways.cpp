#include "mend/ways.h"

namespace jkc {

namespace {

constexpr JkcMisreading kWays[] = {
    {JKC_TYPE_UTF8, JKC_READ_CP1252},  {JKC_TYPE_UTF8, JKC_READ_LATIN1},    {JKC_TYPE_UTF8, JKC_READ_CP850},
    {JKC_TYPE_UTF8, JKC_READ_CP437},   {JKC_TYPE_UTF8, JKC_READ_MAC_ROMAN}, {JKC_TYPE_UTF8, JKC_TYPE_SJIS},
    {JKC_TYPE_UTF8, JKC_TYPE_EUC_MS},  {JKC_TYPE_SJIS, JKC_READ_CP1252},    {JKC_TYPE_SJIS, JKC_READ_LATIN1},
    {JKC_TYPE_SJIS, JKC_READ_CP850},   {JKC_TYPE_SJIS, JKC_READ_CP437},     {JKC_TYPE_SJIS, JKC_READ_MAC_ROMAN},
    {JKC_TYPE_SJIS, JKC_TYPE_EUC_MS},  {JKC_TYPE_EUC_MS, JKC_READ_CP1252},  {JKC_TYPE_EUC_MS, JKC_READ_LATIN1},
    {JKC_TYPE_EUC_MS, JKC_READ_CP850}, {JKC_TYPE_EUC_MS, JKC_READ_CP437},   {JKC_TYPE_EUC_MS, JKC_READ_MAC_ROMAN},
    {JKC_TYPE_EUC_MS, JKC_TYPE_SJIS},
};

} // namespace

std::span<const JkcMisreading> ways_back() { return kWays; }

} // namespace jkc

const char *jkc_misread_name(int32_t encoding) {
    switch (encoding) {
    case JKC_TYPE_UTF8:
        return "UTF-8";
    case JKC_TYPE_SJIS:
        return "Shift_JIS";
    case JKC_TYPE_EUC_MS:
        return "EUC-JP";
    case JKC_READ_CP1252:
        return "CP1252";
    case JKC_READ_CP850:
        return "CP850";
    case JKC_READ_CP437:
        return "CP437";
    case JKC_READ_LATIN1:
        return "ISO-8859-1";
    case JKC_READ_MAC_ROMAN:
        return "Mac Roman";
    default:
        return "";
    }
}
