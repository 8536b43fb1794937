# Warnings, hardening and sanitizers, carried by interface targets that every own target links.
add_library(quillmark_compiler_options INTERFACE)

# The scripts that compile without CMake read the same list.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS cmake/warnings.txt)
file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/warnings.txt warning_flags)
target_compile_options(quillmark_compiler_options INTERFACE
    ${warning_flags}
    # GCC 12 sees an overlap in "x" + std::string where there is none.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)

if(QUILLMARK_WARNINGS_AS_ERRORS)
    target_compile_options(quillmark_compiler_options INTERFACE -Werror)
endif()

# A shared object shows what is marked to be shown; whatever else it has is its own, and called as
# directly as in a program.
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

# What Debian builds its own programs with. A compiler by itself does some of it, here and there.
add_library(quillmark_hardening INTERFACE)
if(CMAKE_SYSTEM_NAME STREQUAL "Linux" AND NOT QUILLMARK_SANITIZE
        AND NOT QUILLMARK_SANITIZE_THREADS AND NOT QUILLMARK_COVERAGE)
    # Any address, and no table of functions that could be overwritten.
    include(CheckPIESupported)
    check_pie_supported()
    set(CMAKE_POSITION_INDEPENDENT_CODE ON)
    target_link_options(quillmark_compiler_options INTERFACE -Wl,-z,relro,-z,now)
    # Checks of buffers and of the stack: for what users get, compiled with optimisation.
    set(buffer_checks -fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
    target_compile_options(quillmark_hardening INTERFACE "$<$<CONFIG:Release>:${buffer_checks}>")
endif()

if(QUILLMARK_SANITIZE)
    set(sanitizer_flags -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_compile_options(quillmark_compiler_options INTERFACE ${sanitizer_flags})
    target_link_options(quillmark_compiler_options INTERFACE ${sanitizer_flags})
endif()

if(QUILLMARK_SANITIZE_THREADS)
    set(sanitizer_flags -fsanitize=thread -fno-omit-frame-pointer)
    target_compile_options(quillmark_compiler_options INTERFACE ${sanitizer_flags})
    target_link_options(quillmark_compiler_options INTERFACE ${sanitizer_flags})
endif()

if(QUILLMARK_FUZZ)
    # What libFuzzer watches; the targets link it by themselves.
    target_compile_options(quillmark_compiler_options INTERFACE -fsanitize=fuzzer-no-link
        -fsanitize-ignorelist=${CMAKE_CURRENT_LIST_DIR}/sanitizer-ignore.txt)
endif()

if(QUILLMARK_COVERAGE)
    # Tests count, too, what they use of the headers of src/: the linker may take their copy of it.
    # Without optimisation every line keeps its own counts.
    target_compile_options(quillmark_compiler_options INTERFACE
        --coverage -fprofile-filter-files=${PROJECT_SOURCE_DIR}/src/.* -O0 -g0)
    target_link_options(quillmark_compiler_options INTERFACE --coverage)
endif()

# quillmark_target_name(VARIABLE FOLDER): the library of a folder of src/ without the prefix of all, as
# in a2l_tokens for a2l/tokens.
function(quillmark_target_name variable folder)
    string(REPLACE "/" "_" name ${folder})
    set(${variable} ${name} PARENT_SCOPE)
endfunction()

# One static library per folder of src/. Sources are listed by name; DEPENDS are the folders that
# the headers of this one include. TOGETHER: a release compiles them together; only for a folder in which no
# conversion spends its time, which takes more of it where the compiler inlines otherwise.
function(quillmark_add_library folder)
    cmake_parse_arguments(ARG "TOGETHER" "" "SOURCES;DEPENDS;PRIVATE_LIBRARIES" ${ARGN})
    quillmark_target_name(name ${folder})
    set(target quillmark_${name})
    add_library(${target} STATIC ${ARG_SOURCES})
    if(ARG_TOGETHER AND NOT DEFINED CMAKE_UNITY_BUILD AND NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
        set_target_properties(${target} PROPERTIES UNITY_BUILD ON)
    endif()
    target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    foreach(dependency IN LISTS ARG_DEPENDS)
        quillmark_target_name(name ${dependency})
        target_link_libraries(${target} PUBLIC quillmark_${name})
    endforeach()
    target_link_libraries(${target} PRIVATE quillmark_compiler_options quillmark_hardening
        ${ARG_PRIVATE_LIBRARIES})
endfunction()

# quillmark_compile_together(TARGET GROUP SOURCE...): in the builds that put several sources together, TARGET
# has only those together that are named in one GROUP: the others use the same names for things of
# their own, or the keywords of another protocol.
function(quillmark_compile_together target group)
    set_target_properties(${target} PROPERTIES UNITY_BUILD_MODE GROUP)
    set_source_files_properties(${ARGN} PROPERTIES UNITY_GROUP ${group})
endfunction()
