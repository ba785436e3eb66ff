// The exported converters, and the table of routes.
#include "convert/routes.h"

#include "convert/whole_input.h"

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

struct Route {
    Family source;
    Family target;
    MakeConversion *make;
};

#define JKC_ROUTE(source, target) {families::source, families::target, JKC_MAKER(source, target)},
constexpr Route kRoutes[] = {JKC_FOR_EACH_CONVERTER(JKC_ROUTE, JKC_ROUTE)};
#undef JKC_ROUTE

} // namespace

MakeConversion *find_route(int32_t src_type, int32_t dst_type) {
    const Family source = family_of(src_type);
    const Family target = family_of(dst_type);
    for (const Route &route : kRoutes) {
        if (route.source == source && route.target == target) {
            return route.make;
        }
    }
    return nullptr;
}

} // namespace jkc

#define JKC_DEFINE_TO_LEGACY(source, target)                                                                           \
    int32_t JKC_CONVERTER(source, target)(JkcContext * ctx) {                                                          \
        return jkc::convert_all(ctx, jkc::JKC_MAKER(source, target), false);                                           \
    }
#define JKC_DEFINE_TO_UNICODE(source, target)                                                                          \
    int32_t JKC_CONVERTER(source, target)(JkcContext * ctx, bool add_bom) {                                            \
        return jkc::convert_all(ctx, jkc::JKC_MAKER(source, target), add_bom);                                         \
    }
JKC_FOR_EACH_CONVERTER(JKC_DEFINE_TO_LEGACY, JKC_DEFINE_TO_UNICODE)
