# What `cmake --install` and the Debian package put where.
include(GNUInstallDirs)

set(QUILLMARK_BASH_COMPLETION_DIR ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
    CACHE STRING "Directory of completions for bash")

# Who installs only the program need not build the tests.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

install(TARGETS quillmark RUNTIME)
install(FILES docs/quillmark.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES completions/quillmark.bash
    DESTINATION ${QUILLMARK_BASH_COMPLETION_DIR} RENAME quillmark)
install(CODE "
    # The zsh of Debian looks below /usr elsewhere than below /usr/local; only now the prefix is known.
    set(directory site-functions)
    if(CMAKE_INSTALL_PREFIX MATCHES \"/usr$\" AND EXISTS /etc/debian_version)
        set(directory vendor-completions)
    endif()
    file(INSTALL \"${PROJECT_SOURCE_DIR}/completions/_quillmark\"
        DESTINATION \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DATADIR}/zsh/\${directory}\")")
install(FILES examples/sigtrakVersions.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/quillmark)
install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR} FILES_MATCHING PATTERN "*.md")
# Where users of Debian look for a licence.
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} RENAME copyright)

# The Debian package; scripts/package builds it.
set(CPACK_PACKAGE_NAME quillmark)
set(CPACK_PACKAGE_VENDOR "VELTRA Quillmark maintainers")
set(CPACK_PACKAGE_CONTACT "VELTRA Quillmark maintainers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "converter of ECU description files for a data logger")
set(CPACK_PACKAGE_DESCRIPTION
    "Converts the description file of a control unit (A2L, ASAM MCD-2 MC) into the include file with
which a sigTrak data logger learns the unit's signals, and compares two descriptions.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
include(CPack)
