# Debian's g++-mingw-w64-x86-64-posix; tests run in wine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(JKC_TRIPLE x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${JKC_TRIPLE}-gcc-posix)
set(CMAKE_CXX_COMPILER ${JKC_TRIPLE}-g++-posix)
set(CMAKE_RC_COMPILER ${JKC_TRIPLE}-windres)
set(CMAKE_CROSSCOMPILING_EMULATOR wine)
set(CMAKE_EXE_LINKER_FLAGS_INIT -static) # the tests' C++ library
include(${CMAKE_CURRENT_LIST_DIR}/cross.cmake)
