# What `cmake --install` and the Debian package put where.
set(QUILLMARK_BASH_COMPLETION_DIR ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
    CACHE STRING "Directory of completions for bash")

# Who installs only the program need not build the tests.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

# Whoever builds: directories are open to all.
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

# install_compressed(FILE DIRECTORY): as Debian keeps manuals and changelogs, always the same bytes.
find_program(GZIP_PROGRAM gzip REQUIRED)
function(install_compressed file directory)
    get_filename_component(name ${file} NAME)
    set(compressed ${PROJECT_BINARY_DIR}/${name}.gz)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${file})
    execute_process(COMMAND ${GZIP_PROGRAM} -9 -n -c ${PROJECT_SOURCE_DIR}/${file}
        OUTPUT_FILE ${compressed} RESULT_VARIABLE status)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "Cannot compress ${file}")
    endif()
    install(FILES ${compressed} DESTINATION ${directory})
endfunction()

# No program but these has a use for the module, so that it is no library of the system's.
if(TARGET quillmark_edges_module)
    file(RELATIVE_PATH module_from_program ${CMAKE_INSTALL_FULL_BINDIR}
        ${CMAKE_INSTALL_PREFIX}/${QUILLMARK_MODULE_DIRECTORY})
    set_target_properties(quillmark PROPERTIES INSTALL_RPATH "$ORIGIN/${module_from_program}")
    install(TARGETS quillmark_edges_module LIBRARY DESTINATION ${QUILLMARK_MODULE_DIRECTORY})
endif()
install(TARGETS quillmark RUNTIME)
if(TARGET pages)
    set(page_directory ${PROJECT_BINARY_DIR}/pages)
    install(FILES ${page_directory}/quillmark.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
    install(FILES ${page_directory}/quillmark.bash
        DESTINATION ${QUILLMARK_BASH_COMPLETION_DIR} RENAME quillmark)
    install_compressed(docs/quillmark-a2l.1 ${CMAKE_INSTALL_MANDIR}/man1 programs)
    install(FILES completions/quillmark-a2l.bash
        DESTINATION ${QUILLMARK_BASH_COMPLETION_DIR} RENAME quillmark-a2l)
    install(CODE "
    # The zsh of Debian looks below /usr elsewhere than below /usr/local; only now the prefix is known.
    set(directory site-functions)
    if(CMAKE_INSTALL_PREFIX MATCHES \"/usr$\" AND EXISTS /etc/debian_version)
        set(directory vendor-completions)
    endif()
    file(INSTALL \"${page_directory}/_quillmark\" \"${PROJECT_SOURCE_DIR}/completions/_quillmark-a2l\"
        DESTINATION \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DATADIR}/zsh/\${directory}\")")
endif()
install(FILES examples/sigtrakVersions.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/quillmark)
install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR} FILES_MATCHING PATTERN "*.md"
    PATTERN "*.schema.json")
# Where users of Debian look for the licences and for the history of a package.
install(FILES packaging/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR})
install_compressed(packaging/changelog ${CMAKE_INSTALL_DOCDIR})
if(EXISTS /etc/debian_version AND CMAKE_SYSTEM_NAME STREQUAL "Linux")
    install(FILES packaging/lintian-overrides
        DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME quillmark)
endif()

# The Debian package; scripts/package builds it.
set(CPACK_PACKAGE_NAME quillmark)
set(CPACK_PACKAGE_VENDOR "VELTRA Quillmark maintainers")
set(CPACK_PACKAGE_CONTACT "VELTRA Quillmark maintainers <maintainers@quillmark.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "converter of ECU description files for a data logger")
set(CPACK_PACKAGE_DESCRIPTION
"Quillmark reads the description of a control unit (A2L, ASAM MCD-2 MC) that
is measured with CCP or XCP.
.
It converts the description into the include file with which a sigTrak data
logger learns the signals of the unit: their addresses, conversions and units.
It packs that file together with others for the logger, expands a compressed
one, and compares two descriptions: whether a logger that was set up for one
release of a unit can measure the next.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS ${CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS})
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
include(CPack)
