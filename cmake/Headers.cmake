# The public headers, and the version that stands in the first of them.
set(JKC_INCLUDE_DIR ${CMAKE_CURRENT_LIST_DIR}/../include)
cmake_path(NORMAL_PATH JKC_INCLUDE_DIR)
set(JKC_PUBLIC_HEADERS jkc.h jkc/converter.h jkc/detector.h jkc/internal.h jkc/lines.h jkc/mojibake.h jkc/slots.h jkc/tables.h)
list(TRANSFORM JKC_PUBLIC_HEADERS PREPEND ${JKC_INCLUDE_DIR}/)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${JKC_PUBLIC_HEADERS})

set(JKC_VERSION)
foreach(part IN ITEMS MAJOR MINOR PATCH)
    file(STRINGS ${JKC_INCLUDE_DIR}/jkc.h line REGEX "^#define JKC_VERSION_${part} [0-9]+$")
    string(REGEX MATCH "[0-9]+$" number "${line}")
    list(APPEND JKC_VERSION ${number})
endforeach()
list(JOIN JKC_VERSION . JKC_VERSION)
