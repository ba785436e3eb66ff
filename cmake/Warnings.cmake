# Every target of this project is built with these.
function(jkc_set_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion)
    if(JKC_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()
