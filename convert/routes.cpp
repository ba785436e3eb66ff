#include "convert/routes.h"

namespace jkc {

namespace {

// The families under the names that converters go by.
namespace families {
constexpr Family jis = Family::kJis;
constexpr Family sjis = Family::kSjis;
constexpr Family euc = Family::kEuc;
constexpr Family unibe = Family::kUtf16Be;
constexpr Family unile = Family::kUtf16Le;
constexpr Family utf8 = Family::kUtf8;
} // namespace families

// A converter to a Unicode form is also told whether to begin with a BOM.
struct Route {
    Family source;
    Family target;
    int32_t (*to_legacy)(JkcContext *);
    int32_t (*to_unicode)(JkcContext *, bool);
};

#define JKC_TO_LEGACY(source, target) {families::source, families::target, JKC_CONVERTER(source, target), nullptr},
#define JKC_TO_UNICODE(source, target) {families::source, families::target, nullptr, JKC_CONVERTER(source, target)},
constexpr Route kRoutes[] = {JKC_FOR_EACH_CONVERTER(JKC_TO_LEGACY, JKC_TO_UNICODE)};
#undef JKC_TO_LEGACY
#undef JKC_TO_UNICODE

} // namespace

int32_t run_route(JkcContext *ctx, int32_t src_type, int32_t dst_type) {
    const Family source = family_of(src_type);
    const Family target = family_of(dst_type);
    for (const Route &route : kRoutes) {
        if (route.source == source && route.target == target) {
            return route.to_legacy != nullptr ? route.to_legacy(ctx) : route.to_unicode(ctx, has_bom(dst_type));
        }
    }
    return JKC_SUCCESS;
}

} // namespace jkc
