# Debian's g++-aarch64-linux-gnu; tests run in qemu-user.
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(JKC_TRIPLE aarch64-linux-gnu)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-aarch64 -L /usr/${JKC_TRIPLE})
include(${CMAKE_CURRENT_LIST_DIR}/linux-gnu.cmake)
