# Debian's musl-tools, which know C only. g++ takes the options of their wrapper, and its own headers beside those of
# musl. There is no C++ library for musl here: what needs one is not built.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR ${CMAKE_HOST_SYSTEM_PROCESSOR})
set(CMAKE_C_COMPILER musl-gcc)
set(CMAKE_CXX_COMPILER g++)
set(wrapper_options -specs=/usr/lib/${CMAKE_HOST_SYSTEM_PROCESSOR}-linux-musl/musl-gcc.specs)
file(GLOB folders /usr/include/c++/[0-9]* /usr/include/${CMAKE_HOST_SYSTEM_PROCESSOR}-linux-gnu/c++/[0-9]*)
list(TRANSFORM folders PREPEND "-isystem ")
list(JOIN folders " " folders)
set(CMAKE_CXX_FLAGS_INIT "${wrapper_options} ${folders} -include ${CMAKE_CURRENT_LIST_DIR}/musl.h")
foreach(kind IN ITEMS EXE SHARED)
    set(CMAKE_${kind}_LINKER_FLAGS_INIT -nodefaultlibs)
endforeach()
set(CMAKE_C_STANDARD_LIBRARIES "-lc -lgcc")
set(CMAKE_CXX_STANDARD_LIBRARIES "-lc -lgcc")
# Its programs run here: no emulator, but nothing of the host's is linked.
set(CMAKE_CROSSCOMPILING TRUE)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
