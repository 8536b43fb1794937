# What programs need that use the library: installed for components `library` (to run) and
# `development` (to build).
include(CMakePackageConfigHelpers)

set_target_properties(quillmark_shared PROPERTIES INSTALL_RPATH "$ORIGIN/quillmark/modules")
# A static library can't say where its module is, so those who link it do.
target_link_options(quillmark_static INTERFACE
    $<INSTALL_INTERFACE:-Wl,-rpath,$<INSTALL_PREFIX>/${QUILLMARK_MODULE_DIRECTORY}>)
install(TARGETS quillmark_shared quillmark_static EXPORT quillmarkTargets
    LIBRARY COMPONENT library NAMELINK_COMPONENT development
    ARCHIVE COMPONENT development)
install(DIRECTORY include/quillmark TYPE INCLUDE COMPONENT development)

set(package_directory ${CMAKE_INSTALL_LIBDIR}/cmake/quillmark)
set(generated ${PROJECT_BINARY_DIR}/cmake)
configure_package_config_file(cmake/quillmarkConfig.cmake.in ${generated}/quillmarkConfig.cmake
    INSTALL_DESTINATION ${package_directory})
write_basic_package_version_file(${generated}/quillmarkConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${generated}/quillmarkConfig.cmake ${generated}/quillmarkConfigVersion.cmake
    DESTINATION ${package_directory} COMPONENT development)
install(EXPORT quillmarkTargets NAMESPACE quillmark:: DESTINATION ${package_directory}
    COMPONENT development)
configure_file(packaging/quillmark.pc.in ${generated}/quillmark.pc @ONLY)
install(FILES ${generated}/quillmark.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
    COMPONENT development)

# Each Debian package tells its licences, its history, and why it keeps off a rule.
set(component_packages library=libquillmark1 development=libquillmark-dev)
if(QUILLMARK_BUILD_PYTHON)
    list(APPEND component_packages python3=python3-quillmark)
endif()
foreach(component_package IN LISTS component_packages)
    string(REPLACE "=" ";" pair ${component_package})
    list(GET pair 0 component)
    list(GET pair 1 package)
    set(directory ${CMAKE_INSTALL_DATADIR}/doc/${package})
    install(FILES packaging/copyright DESTINATION ${directory} COMPONENT ${component})
    install_compressed(packaging/changelog ${directory} ${component})
    set(overrides packaging/${package}/lintian-overrides)
    if(EXISTS /etc/debian_version AND EXISTS ${PROJECT_SOURCE_DIR}/${overrides})
        install(FILES ${overrides}
            DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME ${package}
            COMPONENT ${component})
    endif()
endforeach()
