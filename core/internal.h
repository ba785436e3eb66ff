// What every part of the library includes: the public header with its second tier.
#pragma once

#ifndef JKC_INTERNAL_API
#define JKC_INTERNAL_API
#endif
#include "jkc.h"

#define JKC_CONVERTERS_FROM(source, TO_LEGACY, TO_UNICODE)                                                             \
    TO_LEGACY(source, jis)                                                                                             \
    TO_LEGACY(source, sjis)                                                                                            \
    TO_LEGACY(source, euc)                                                                                             \
    TO_UNICODE(source, unibe)                                                                                          \
    TO_UNICODE(source, unile)                                                                                          \
    TO_UNICODE(source, utf8)
#define JKC_CONVERTERS_FROM_jis(TO_LEGACY, TO_UNICODE) JKC_CONVERTERS_FROM(jis, TO_LEGACY, TO_UNICODE)
#define JKC_CONVERTERS_FROM_sjis(TO_LEGACY, TO_UNICODE)                                                                \
    TO_LEGACY(sjis, jis)                                                                                               \
    TO_LEGACY(sjis, euc)                                                                                               \
    TO_UNICODE(sjis, unibe)                                                                                            \
    TO_UNICODE(sjis, unile)                                                                                            \
    TO_UNICODE(sjis, utf8)
#define JKC_CONVERTERS_FROM_euc(TO_LEGACY, TO_UNICODE) JKC_CONVERTERS_FROM(euc, TO_LEGACY, TO_UNICODE)
#define JKC_CONVERTERS_FROM_unibe(TO_LEGACY, TO_UNICODE) JKC_CONVERTERS_FROM(unibe, TO_LEGACY, TO_UNICODE)
#define JKC_CONVERTERS_FROM_unile(TO_LEGACY, TO_UNICODE) JKC_CONVERTERS_FROM(unile, TO_LEGACY, TO_UNICODE)
#define JKC_CONVERTERS_FROM_utf8(TO_LEGACY, TO_UNICODE) JKC_CONVERTERS_FROM(utf8, TO_LEGACY, TO_UNICODE)
#define JKC_FOR_EACH_CONVERTER(TO_LEGACY, TO_UNICODE)                                                                  \
    JKC_CONVERTERS_FROM_jis(TO_LEGACY, TO_UNICODE) JKC_CONVERTERS_FROM_sjis(TO_LEGACY, TO_UNICODE)                     \
        JKC_CONVERTERS_FROM_euc(TO_LEGACY, TO_UNICODE) JKC_CONVERTERS_FROM_unibe(TO_LEGACY, TO_UNICODE)                \
            JKC_CONVERTERS_FROM_unile(TO_LEGACY, TO_UNICODE) JKC_CONVERTERS_FROM_utf8(TO_LEGACY, TO_UNICODE)
