# What `cmake --install` and the Debian package put where.
set(QUILLMARK_BASH_COMPLETION_DIR ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
    CACHE STRING "Directory of completions for bash")

# Packages: the programs, the shared library with its module, what is needed to build with it, and the
# Python package where it is built.
# What names no component belongs to the programs.
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME programs)

# Who installs only the program need not build the tests.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

# Whoever builds: directories are open to all.
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

# install_compressed(FILE DIRECTORY): as Debian keeps manuals and changelogs, always the same bytes.
find_program(GZIP_PROGRAM gzip REQUIRED)
function(install_compressed file directory component)
    get_filename_component(name ${file} NAME)
    set(compressed ${PROJECT_BINARY_DIR}/${name}.gz)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${file})
    execute_process(COMMAND ${GZIP_PROGRAM} -9 -n -c ${PROJECT_SOURCE_DIR}/${file}
        OUTPUT_FILE ${compressed} RESULT_VARIABLE status)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "Cannot compress ${file}")
    endif()
    install(FILES ${compressed} DESTINATION ${directory} COMPONENT ${component})
endfunction()

# Nobody but these and the library has a use for the module, so that it is no library of the system's.
if(TARGET quillmark_edges_module)
    file(RELATIVE_PATH module_from_program ${CMAKE_INSTALL_FULL_BINDIR}
        ${CMAKE_INSTALL_PREFIX}/${QUILLMARK_MODULE_DIRECTORY})
    set_target_properties(quillmark quillmark-a2l PROPERTIES
        INSTALL_RPATH "$ORIGIN/${module_from_program}")
    install(TARGETS quillmark_edges_module
        LIBRARY DESTINATION ${QUILLMARK_MODULE_DIRECTORY} COMPONENT library)
    include(cmake/install_library.cmake)
endif()
install(TARGETS quillmark quillmark-a2l RUNTIME)
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
install_compressed(packaging/changelog ${CMAKE_INSTALL_DOCDIR} programs)
if(EXISTS /etc/debian_version AND CMAKE_SYSTEM_NAME STREQUAL "Linux")
    install(FILES packaging/lintian-overrides
        DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME quillmark)
endif()

# The Debian packages; scripts/package builds them.
set(CPACK_PACKAGE_NAME quillmark)
set(CPACK_PACKAGE_VENDOR "VELTRA Quillmark maintainers")
set(CPACK_PACKAGE_CONTACT "VELTRA Quillmark maintainers <maintainers@quillmark.example>")
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL programs library development)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_COMPONENT_PROGRAMS_DEPENDS library)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS library)
set(CPACK_DEBIAN_PROGRAMS_PACKAGE_NAME quillmark)
set(CPACK_DEBIAN_PROGRAMS_DESCRIPTION
"converter of ECU description files for a data logger
Quillmark reads the description of a control unit (A2L, ASAM MCD-2 MC) that
is measured with CCP or XCP.
.
It converts the description into the include file with which a sigTrak data
logger learns the signals of the unit: their addresses, conversions and units.
It packs that file together with others for the logger, expands a compressed
one, and compares two descriptions: whether a logger that was set up for one
release of a unit can measure the next.")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME libquillmark1)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_DESCRIPTION
"library for ECU description files
libquillmark reads the description of a control unit (A2L, ASAM MCD-2 MC) and
shows what is in it: signals, conversions, protocol settings. It converts,
expands and compares like the program quillmark.")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA
    ${PROJECT_SOURCE_DIR}/packaging/libquillmark1/shlibs
    ${PROJECT_SOURCE_DIR}/packaging/libquillmark1/triggers)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libquillmark-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS zlib1g-dev)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
"library for ECU description files, to build with
libquillmark reads the description of a control unit (A2L, ASAM MCD-2 MC) and
shows what is in it: signals, conversions, protocol settings. It converts,
expands and compares like the program quillmark.
.
This package has its headers, the static library, and what CMake and
pkg-config need to find it.")
if(TARGET quillmark_python_shared)
    list(APPEND CPACK_COMPONENTS_ALL python3)
    set(CPACK_COMPONENT_PYTHON3_DEPENDS library)
    set(CPACK_DEBIAN_PYTHON3_PACKAGE_NAME python3-quillmark)
    set(CPACK_DEBIAN_PYTHON3_PACKAGE_SECTION python)
    set(CPACK_DEBIAN_PYTHON3_PACKAGE_DEPENDS ${QUILLMARK_PYTHON_DEPENDS})
    set(CPACK_DEBIAN_PYTHON3_PACKAGE_SUGGESTS "python3-numpy, python3-pandas")
    set(CPACK_DEBIAN_PYTHON3_DESCRIPTION
"Python package for ECU description files
The package quillmark reads the description of a control unit (A2L, ASAM MCD-2
MC) as quickly as the library to which it is bound. Its signals, conversions
and settings are there to be walked in Python, calculated with, and decoded; it
prepares, converts, expands and compares like the programs.")
    set(CPACK_DEBIAN_PYTHON3_PACKAGE_CONTROL_EXTRA
        ${PROJECT_SOURCE_DIR}/packaging/python3-quillmark/postinst
        ${PROJECT_SOURCE_DIR}/packaging/python3-quillmark/prerm)
    # A library of this tree has no package yet that dpkg could be asked for.
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/lib)
endif()
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS ${CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS})
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
include(CPack)
