# What the toolchains of Debian for other Linux platforms share.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_C_COMPILER ${JKC_TRIPLE}-gcc)
set(CMAKE_CXX_COMPILER ${JKC_TRIPLE}-g++)
include(${CMAKE_CURRENT_LIST_DIR}/cross.cmake)
