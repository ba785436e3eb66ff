# Every target of this project is built with these.
function(jkc_set_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # Vectors pass between our own functions only, which all agree, with SSE2 or without.
        target_compile_options(${target} PRIVATE -Wno-psabi)
    endif()
    if(JKC_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()
