# What `cmake --install` and the Debian package put where.
include(GNUInstallDirs)

set(QUILLMARK_BASH_COMPLETION_DIR ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
    CACHE STRING "Directory of completions for bash")
set(QUILLMARK_ZSH_COMPLETION_DIR ${CMAKE_INSTALL_DATADIR}/zsh/site-functions
    CACHE STRING "Directory of completions for zsh")

# Who installs only the program need not build the tests.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

install(TARGETS quillmark RUNTIME)
install(FILES docs/quillmark.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES completions/quillmark.bash
    DESTINATION ${QUILLMARK_BASH_COMPLETION_DIR} RENAME quillmark)
install(FILES completions/_quillmark DESTINATION ${QUILLMARK_ZSH_COMPLETION_DIR})
install(FILES examples/sigtrakVersions.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/quillmark)
install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR} FILES_MATCHING PATTERN "*.md")
# Where users of Debian look for a licence.
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} RENAME copyright)
