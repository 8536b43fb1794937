# What is special about building for Windows with MinGW.

# libarchive is part of the program. It was built with 64-bit offsets, with which `struct stat` has other
# members, so whoever includes its header has to have them, too.
if(MINGW)
    set_property(TARGET LibArchive::LibArchive APPEND PROPERTY
        INTERFACE_COMPILE_DEFINITIONS LIBARCHIVE_STATIC _FILE_OFFSET_BITS=64)
endif()
