// Texts of the status codes.
#include "core/messages.h"

#include <cstdio>

extern const JkcStatusMessage _satusMessage[] = {
    {JKC_SUCCESS, "SUCCESS:処理成功"},
    {static_cast<uint32_t>(JKC_EOF), "EOF:入力ファイルの終わり"},
    {static_cast<uint32_t>(JKC_ENOTEXISTS), "ENOTEXISTS:ファイルは存在せず"},
    {static_cast<uint32_t>(JKC_ENOTFILE), "ENOTFILE:通常ファイルではない"},
    {static_cast<uint32_t>(JKC_EALLOC), "EALLOC:メモリー・アロケート・エラー"},
    {static_cast<uint32_t>(JKC_EROPEN), "EROPEN:入力ファイル・オープン・エラー"},
    {static_cast<uint32_t>(JKC_EWOPEN), "EWOPEN:出力ファイル・オープン・エラー"},
    {static_cast<uint32_t>(JKC_EREAD), "EREAD:入力エラー"},
    {static_cast<uint32_t>(JKC_EWRITE), "EWRITE:出力エラー"},
    {static_cast<uint32_t>(JKC_EIOMODE), "EIOMODE:入出力モード誤り"},
    {static_cast<uint32_t>(JKC_EIOFDRANGE), "EIOFDRANGE:ファイル記述子範囲誤り"},
    {static_cast<uint32_t>(JKC_EIONOTOPEN), "EIONOTOPEN:未オープン・ファイルへのアクセス"},
    {static_cast<uint32_t>(JKC_EIOMAX), "EIOMAX:上限を超えたファイル・オープン"},
    {static_cast<uint32_t>(JKC_ECTYPE), "ECTYPE:コード・タイプ誤り"},
    {static_cast<uint32_t>(JKC_EBOM), "EBOM:BOM 不正（未使用）"},
    {static_cast<uint32_t>(JKC_EUEXPEOD), "EUEXPEOD:予期せぬデータの終わり"},
    {static_cast<uint32_t>(JKC_ECHAR), "ECHAR:コード値エラー"},
    {static_cast<uint32_t>(JKC_ELTYPE), "ELTYPE:改行コード・タイプ誤り"},
};
extern const uint64_t _satusMessageSize = sizeof _satusMessage / sizeof _satusMessage[0];

static_assert(JKC_EOF == EOF);

// Row 0 is left out: success has no message for a user, so callers print "Unknown" for it.
const char *jkc::message_of(int status) {
    for (uint64_t row = 1; row < _satusMessageSize; ++row) {
        if (static_cast<int32_t>(_satusMessage[row].status) == status) {
            return _satusMessage[row].message;
        }
    }
    return "Unknown";
}
