# Debian's emscripten: the library for bindings/web.
set(EMSCRIPTEN_ROOT_PATH /usr/share/emscripten)
include(${EMSCRIPTEN_ROOT_PATH}/cmake/Modules/Platform/Emscripten.cmake)
