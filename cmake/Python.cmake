# JKC_HAVE_PYTHON: the package for Python is built, for the tests, with JKC_PYTHON_EXECUTABLE, which has what that needs.
# JKC_PYTHON_REASON says why it is so. scripts/wheel makes what is installed.
set(JKC_HAVE_PYTHON FALSE)
if(NOT JKC_PYTHON)
    set(JKC_PYTHON_REASON "JKC_PYTHON is ${JKC_PYTHON}")
elseif(CMAKE_CROSSCOMPILING)
    set(JKC_PYTHON_REASON "this build is for another machine")
elseif(NOT JKC_BUILD_TESTS OR NOT JKC_BUILD_CLI)
    set(JKC_PYTHON_REASON "it is built for the tests, with the program")
elseif(JKC_SANITIZE AND NOT (JKC_SANITIZE MATCHES "address" AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU"))
    set(JKC_PYTHON_REASON "only gcc has sanitizers that can be preloaded")
else()
    # The system's first: one that comes before it on the PATH rarely has the system's packages.
    foreach(candidate IN ITEMS ${JKC_PYTHON_EXECUTABLE} /usr/bin/python3 python3)
        execute_process(
            COMMAND ${candidate} -c "import cffi, pytest, setuptools, sysconfig, os, sys
sys.exit(sys.version_info < (3, 9) or not os.path.exists(sysconfig.get_path('include') + '/Python.h'))"
            RESULT_VARIABLE lacking OUTPUT_QUIET ERROR_QUIET)
        if(lacking EQUAL 0)
            set(JKC_PYTHON_EXECUTABLE ${candidate} CACHE FILEPATH "The interpreter that the package for Python is built with")
            set(JKC_HAVE_PYTHON TRUE)
            break()
        endif()
    endforeach()
    set(JKC_PYTHON_REASON "with ${JKC_PYTHON_EXECUTABLE}")
    if(NOT JKC_HAVE_PYTHON)
        set(JKC_PYTHON_REASON "there is no Python 3.9 or later with its headers, cffi, setuptools and pytest")
    endif()
endif()
if(JKC_PYTHON AND NOT JKC_PYTHON STREQUAL "AUTO" AND NOT JKC_HAVE_PYTHON)
    message(FATAL_ERROR "JKC_PYTHON is ${JKC_PYTHON}, but ${JKC_PYTHON_REASON}")
endif()
