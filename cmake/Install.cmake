include(CMakePackageConfigHelpers)

install(TARGETS ${JKC_LIBRARIES} EXPORT jkcTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} # where Windows looks for DLLs
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY ${JKC_INCLUDE_DIR}/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
if(JKC_BUILD_CLI)
    install(TARGETS jkc_program RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
if(JKC_BUILD_CLI) # where the shells look
    install(FILES cli/completion/jkc.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME jkc)
    install(FILES cli/completion/_jkc DESTINATION ${JKC_ZSH_COMPLETIONS})
    install(FILES cli/completion/jkc.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
endif()
if(JKC_HAVE_JNI)
    install(FILES ${JKC_JAR} DESTINATION ${CMAKE_INSTALL_DATADIR}/java)
endif()

include(cmake/ManPages.cmake)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/jkc)
install(EXPORT jkcTargets NAMESPACE jkc:: DESTINATION ${package_dir})
write_basic_package_version_file(jkcConfigVersion.cmake COMPATIBILITY SameMajorVersion)
configure_file(cmake/jkcConfig.cmake.in jkcConfig.cmake COPYONLY)
install(FILES ${PROJECT_BINARY_DIR}/jkcConfig.cmake ${PROJECT_BINARY_DIR}/jkcConfigVersion.cmake DESTINATION ${package_dir})

# The prefix in jkc.pc is told relative to the file, so that the installed tree can be moved.
file(RELATIVE_PATH pc_to_prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" pc_to_prefix ${pc_to_prefix})
configure_file(cmake/jkc.pc.in jkc.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/jkc.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
