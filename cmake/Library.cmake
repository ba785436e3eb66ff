# libjkc.so (target jkc) and libjkc.a (target jkc_static), both from jkc_objects. JKC_LIBRARIES: those that are built.
include(CheckCXXCompilerFlag)

set_target_properties(jkc_objects PROPERTIES CXX_VISIBILITY_PRESET hidden)
if(NOT EMSCRIPTEN) # where code is at no address
    set_target_properties(jkc_objects PROPERTIES POSITION_INDEPENDENT_CODE ON)
endif()
target_include_directories(jkc_objects PRIVATE ${PROJECT_SOURCE_DIR} ${JKC_INCLUDE_DIR})
target_compile_definitions(jkc_objects PRIVATE JKC_BUILDING_LIBRARY)
target_compile_options(jkc_objects PRIVATE -fno-exceptions -fno-rtti)
check_cxx_compiler_flag(-fno-semantic-interposition JKC_HAVE_NO_SEMANTIC_INTERPOSITION)
if(NOT EMSCRIPTEN AND JKC_HAVE_NO_SEMANTIC_INTERPOSITION)
    target_compile_options(jkc_objects PRIVATE -fno-semantic-interposition)
endif()
jkc_set_warnings(jkc_objects)

set(JKC_LIBRARIES)
if(JKC_BUILD_SHARED)
    add_library(jkc SHARED $<TARGET_OBJECTS:jkc_objects>)
    list(APPEND JKC_LIBRARIES jkc)
    include(cmake/Exports.cmake) # JKC_VERSION_SCRIPT
    set_target_properties(jkc PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}
        LINK_DEPENDS ${JKC_VERSION_SCRIPT})
    # The library uses nothing of libstdc++, which the compiler links all the same: as-needed leaves it out again.
    if(NOT WIN32) # where what is exported is marked in the code, and only what is used is needed
        target_link_options(jkc PRIVATE -Wl,--version-script=${JKC_VERSION_SCRIPT} -Wl,--as-needed)
    endif()
    if(NOT JKC_SANITIZE AND NOT WIN32)
        # Whatever the C library does not have is found here, not by the user's linker: on 32 bits, what counts bits of 64.
        target_link_options(jkc PRIVATE -Wl,-z,defs -static-libgcc)
    endif()
endif()
if(JKC_BUILD_STATIC)
    add_library(jkc_static STATIC $<TARGET_OBJECTS:jkc_objects>)
    list(APPEND JKC_LIBRARIES jkc_static)
    target_compile_definitions(jkc_static INTERFACE JKC_STATIC)
endif()
foreach(library IN LISTS JKC_LIBRARIES)
    add_library(jkc::${library} ALIAS ${library})
    set_target_properties(${library} PROPERTIES OUTPUT_NAME jkc)
    target_include_directories(${library} INTERFACE $<BUILD_INTERFACE:${JKC_INCLUDE_DIR}>)
endforeach()
# What the program and the examples link: the shared one, where there is one.
list(GET JKC_LIBRARIES 0 library)
add_library(jkc::library ALIAS ${library})
