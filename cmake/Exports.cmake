# Writes JKC_VERSION_SCRIPT and JKC_DECLARATIONS: the shared library exports what the public headers declare, as the compiler sees them,
# and what Java looks for.
separate_arguments(preprocess UNIX_COMMAND "${CMAKE_CXX_COMPILER_ARG1} ${CMAKE_CXX_FLAGS}")
if(CMAKE_CXX_COMPILER_TARGET)
    list(APPEND preprocess ${CMAKE_CXX_COMPILE_OPTIONS_TARGET}${CMAKE_CXX_COMPILER_TARGET})
endif()
if(CMAKE_SYSROOT)
    list(APPEND preprocess ${CMAKE_CXX_COMPILE_OPTIONS_SYSROOT}${CMAKE_SYSROOT})
endif()
execute_process(
    COMMAND ${CMAKE_CXX_COMPILER} ${preprocess} -DJKC_API=JKC_EXPORTED -E -P -x c++ ${JKC_INCLUDE_DIR}/jkc/internal.h
    OUTPUT_VARIABLE declarations COMMAND_ERROR_IS_FATAL ANY)

# A name is the last word in front of the parameters, the brackets of an array, or the end.
string(REGEX MATCHALL "JKC_EXPORTED[^;]*" declarations "${declarations}")
set(names)
foreach(declaration IN LISTS declarations)
    string(REGEX MATCH "^[^[(]*" front "${declaration}")
    string(STRIP "${front}" front)
    string(REGEX MATCH "[A-Za-z0-9_]+$" name "${front}")
    list(APPEND names ${name})
endforeach()
# What a test compares: a line for each.
list(TRANSFORM declarations REPLACE "JKC_EXPORTED|extern" "")
list(TRANSFORM declarations REPLACE "[ \n]+" " ")
list(TRANSFORM declarations STRIP)
list(JOIN declarations "\n" declarations)
set(JKC_DECLARATIONS ${PROJECT_BINARY_DIR}/declarations.txt)
file(CONFIGURE OUTPUT ${JKC_DECLARATIONS} CONTENT "${declarations}\n" @ONLY)
list(SORT names)
if(JKC_HAVE_JNI)
    list(APPEND names Java_kestro_jkc_* _jjkc_* _jni_info)
endif()

set(JKC_VERSION_SCRIPT ${PROJECT_BINARY_DIR}/jkc.map)
list(TRANSFORM names PREPEND "        ")
list(JOIN names ";\n" name_lines)
file(CONFIGURE OUTPUT ${JKC_VERSION_SCRIPT} @ONLY CONTENT
"JKC_@PROJECT_VERSION_MAJOR@ {
    global:
@name_lines@;
    local:
        *;
};
")
