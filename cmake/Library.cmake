# libjkc.so (target jkc) and libjkc.a (target jkc_static), both from jkc_objects.
include(CheckCXXCompilerFlag)

set_target_properties(jkc_objects PROPERTIES POSITION_INDEPENDENT_CODE ON CXX_VISIBILITY_PRESET hidden)
target_include_directories(jkc_objects PRIVATE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/include)
target_compile_options(jkc_objects PRIVATE -fno-exceptions -fno-rtti)
check_cxx_compiler_flag(-fno-semantic-interposition JKC_HAVE_NO_SEMANTIC_INTERPOSITION)
if(JKC_HAVE_NO_SEMANTIC_INTERPOSITION)
    target_compile_options(jkc_objects PRIVATE -fno-semantic-interposition)
endif()
jkc_set_warnings(jkc_objects)

# These hold one exported name a line; the version script is made from them.
set(JKC_EXPORTS_LIST ${PROJECT_SOURCE_DIR}/cmake/exports.txt) # declared in jkc.h
set(JKC_EXPORTS_LISTS ${JKC_EXPORTS_LIST})
if(JKC_HAVE_JNI)
    list(APPEND JKC_EXPORTS_LISTS ${PROJECT_SOURCE_DIR}/cmake/exports_jni.txt)
endif()
set(JKC_VERSION_SCRIPT ${PROJECT_BINARY_DIR}/jkc.map)
set_property(DIRECTORY ${PROJECT_SOURCE_DIR} APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${JKC_EXPORTS_LISTS})
set(export_names)
foreach(list IN LISTS JKC_EXPORTS_LISTS)
    file(STRINGS ${list} names REGEX "^[^#]")
    list(APPEND export_names ${names})
endforeach()
list(TRANSFORM export_names PREPEND "        ")
list(JOIN export_names ";\n" export_lines)
file(CONFIGURE OUTPUT ${JKC_VERSION_SCRIPT} @ONLY CONTENT
"JKC_@PROJECT_VERSION_MAJOR@ {
    global:
@export_lines@;
    local:
        *;
};
")

add_library(jkc SHARED $<TARGET_OBJECTS:jkc_objects>)
add_library(jkc_static STATIC $<TARGET_OBJECTS:jkc_objects>)
add_library(jkc::jkc ALIAS jkc)
add_library(jkc::jkc_static ALIAS jkc_static)
foreach(library IN ITEMS jkc jkc_static)
    set_target_properties(${library} PROPERTIES OUTPUT_NAME jkc)
    target_include_directories(${library} INTERFACE $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>)
endforeach()
set_target_properties(jkc PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}
    LINK_DEPENDS ${JKC_VERSION_SCRIPT})
# The library uses nothing of libstdc++, which the compiler links all the same: as-needed leaves it out again.
target_link_options(jkc PRIVATE -Wl,--version-script=${JKC_VERSION_SCRIPT} -Wl,--as-needed)
if(NOT JKC_SANITIZE)
    # Whatever the C library does not have is found here, not by the user's linker.
    target_link_options(jkc PRIVATE -Wl,-z,defs)
endif()
