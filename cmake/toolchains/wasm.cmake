# Debian's emscripten, for bindings/web. Node and browsers have had instructions for 16 bytes since 2023, the last one.
set(EMSCRIPTEN_ROOT_PATH /usr/share/emscripten)
include(${EMSCRIPTEN_ROOT_PATH}/cmake/Modules/Platform/Emscripten.cmake)
set(CMAKE_CXX_FLAGS_INIT -msimd128)
