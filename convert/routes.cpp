#include "convert/routes.h"

namespace jkc {

namespace {

// A converter takes the context alone, or also whether it begins with a byte-order mark.
struct Route {
    int32_t (*plain)(JkcContext *);
    int32_t (*marked)(JkcContext *, bool);
};
constexpr Route to(int32_t (*converter)(JkcContext *)) { return {converter, nullptr}; }
constexpr Route to(int32_t (*converter)(JkcContext *, bool)) { return {nullptr, converter}; }

// From row to column. Shift_JIS has one form only, so it never meets itself here.
constexpr Route kRoutes[kFamilies][kFamilies] = {
    // JIS, Shift_JIS, EUC, UTF-16BE, UTF-16LE, UTF-8
    {to(_jisto_jis), to(_jisto_sjis), to(_jisto_euc), to(_jisto_unibe), to(_jisto_unile), to(_jisto_utf8)},
    {to(_sjisto_jis), {}, to(_sjisto_euc), to(_sjisto_unibe), to(_sjisto_unile), to(_sjisto_utf8)},
    {to(_eucto_jis), to(_eucto_sjis), to(_eucto_euc), to(_eucto_unibe), to(_eucto_unile), to(_eucto_utf8)},
    {to(_unibeto_jis), to(_unibeto_sjis), to(_unibeto_euc), to(_unibeto_unibe), to(_unibeto_unile), to(_unibeto_utf8)},
    {to(_unileto_jis), to(_unileto_sjis), to(_unileto_euc), to(_unileto_unibe), to(_unileto_unile), to(_unileto_utf8)},
    {to(_utf8to_jis), to(_utf8to_sjis), to(_utf8to_euc), to(_utf8to_unibe), to(_utf8to_unile), to(_utf8to_utf8)},
};

} // namespace

Family family_of(int32_t code_type) {
    switch (code_type) {
    case JKC_TYPE_JIS:
    case JKC_TYPE_JIS2004:
        return Family::kJis;
    case JKC_TYPE_SJIS:
        return Family::kSjis;
    case JKC_TYPE_EUC:
    case JKC_TYPE_EUC_20932:
    case JKC_TYPE_EUC_51932:
    case JKC_TYPE_EUC_MS:
        return Family::kEuc;
    case JKC_TYPE_UTF16BE:
    case JKC_TYPE_UTF16BE_BOM:
        return Family::kUtf16Be;
    case JKC_TYPE_UTF16LE:
    case JKC_TYPE_UTF16LE_BOM:
        return Family::kUtf16Le;
    case JKC_TYPE_UTF8:
    case JKC_TYPE_UTF8_BOM:
        return Family::kUtf8;
    default:
        return Family::kNone;
    }
}

bool has_mark(int32_t code_type) {
    return code_type == JKC_TYPE_UTF16BE_BOM || code_type == JKC_TYPE_UTF16LE_BOM || code_type == JKC_TYPE_UTF8_BOM;
}

int32_t run_route(JkcContext *ctx, int32_t src_type, int32_t dst_type) {
    const Family source = family_of(src_type);
    const Family target = family_of(dst_type);
    if (source == Family::kNone || target == Family::kNone) {
        return JKC_SUCCESS;
    }
    const Route &route = kRoutes[static_cast<int>(source)][static_cast<int>(target)];
    if (route.plain != nullptr) {
        return route.plain(ctx);
    }
    return route.marked != nullptr ? route.marked(ctx, has_mark(dst_type)) : JKC_SUCCESS;
}

} // namespace jkc
