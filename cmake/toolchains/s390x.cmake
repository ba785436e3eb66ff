# Debian's g++-s390x-linux-gnu; tests run in qemu-user.
set(CMAKE_SYSTEM_PROCESSOR s390x)
set(JKC_TRIPLE s390x-linux-gnu)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-s390x -L /usr/${JKC_TRIPLE})
include(${CMAKE_CURRENT_LIST_DIR}/linux-gnu.cmake)
