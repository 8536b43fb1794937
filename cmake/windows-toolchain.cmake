# Compiles for 64-bit Windows with the MinGW-w64 compilers of Debian. QUILLMARK_WINDOWS_LIBRARIES is the
# folder of the libraries for Windows, which scripts/windows-libraries builds and names.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES QUILLMARK_WINDOWS_LIBRARIES)
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
if(QUILLMARK_WINDOWS_LIBRARIES)
    list(PREPEND CMAKE_FIND_ROOT_PATH ${QUILLMARK_WINDOWS_LIBRARIES})
    list(PREPEND CMAKE_PREFIX_PATH ${QUILLMARK_WINDOWS_LIBRARIES})
endif()
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
# Packages of the host give the tools that run while building.
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)

file(GLOB_RECURSE qt_host_package /usr/lib/*/cmake/Qt6HostInfo/Qt6HostInfoConfig.cmake)
if(qt_host_package)
    get_filename_component(qt_host_folder ${qt_host_package} DIRECTORY)
    get_filename_component(qt_host_folder ${qt_host_folder} DIRECTORY)
    set(QT_HOST_PATH /usr CACHE PATH "")
    set(QT_HOST_PATH_CMAKE_DIR ${qt_host_folder} CACHE PATH "")
endif()

# One program without companions; the same sources give the same bytes.
set(ZLIB_LIBRARY /usr/x86_64-w64-mingw32/lib/libz.a CACHE FILEPATH "")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -Wl,--no-insert-timestamp")
