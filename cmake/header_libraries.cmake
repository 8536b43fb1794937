# Libraries that are headers only.

# quillmark_add_header_library(TARGET FOLDER): FOLDER as it stands in the system's include directory.
# A program for Windows takes the same headers, by a link of their own: beside them are those of this
# system's C library, which it must not see.
function(quillmark_add_header_library target folder)
    find_path(QUILLMARK_${folder}_DIRECTORY ${folder}
        PATHS /usr/include /usr/local/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
    set(directory ${QUILLMARK_${folder}_DIRECTORY})
    if(CMAKE_CROSSCOMPILING)
        set(linked ${PROJECT_BINARY_DIR}/header_libraries)
        file(MAKE_DIRECTORY ${linked})
        file(CREATE_LINK ${directory}/${folder} ${linked}/${folder} SYMBOLIC)
        set(directory ${linked})
    endif()
    add_library(${target} INTERFACE)
    target_include_directories(${target} SYSTEM INTERFACE ${directory})
endfunction()

quillmark_add_header_library(quillmark_cli11 CLI)
quillmark_add_header_library(quillmark_rapidjson rapidjson)
