# Debian's g++-i686-linux-gnu; an x86-64 Linux runs its programs, with the C library that belongs to it.
set(CMAKE_SYSTEM_PROCESSOR i686)
set(JKC_TRIPLE i686-linux-gnu)
set(CMAKE_CROSSCOMPILING_EMULATOR /usr/${JKC_TRIPLE}/lib/ld-linux.so.2 --library-path /usr/${JKC_TRIPLE}/lib)
include(${CMAKE_CURRENT_LIST_DIR}/linux-gnu.cmake)
