# jkc_preloaded_runtimes(OUT): the runtimes of gcc's sanitizers as LD_PRELOAD takes them. An interpreter or virtual machine is
# not sanitized itself, so that they come to it from outside.
function(jkc_preloaded_runtimes out)
    foreach(runtime IN ITEMS libasan.so libubsan.so)
        execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${runtime}
            OUTPUT_VARIABLE file OUTPUT_STRIP_TRAILING_WHITESPACE)
        list(APPEND runtimes ${file})
    endforeach()
    list(JOIN runtimes ":" runtimes)
    set(${out} ${runtimes} PARENT_SCOPE)
endfunction()
