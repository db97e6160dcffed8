# The programs of tools/ are installed as `files-pdf-*`. Each one's manual page is what it says with --help-all, under
# the sentence that its source begins with.
find_program(HELP2MAN help2man)
if(NOT HELP2MAN)
    message(STATUS "Without help2man the programs are installed without manual pages")
endif()
foreach(name inspect rewrite recompress replace-stream save-in-place fields fill flatten background batch)
    set(program files-pdf-${name})
    if(NOT TARGET ${program})
        continue()
    endif()
    set_target_properties(${program} PROPERTIES
        INSTALL_RPATH "\$ORIGIN/../${CMAKE_INSTALL_LIBDIR}" BUILD_WITH_INSTALL_RPATH ON)
    install(TARGETS ${program} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)
    set(names ${program})
    if(name STREQUAL background)
        list(APPEND names files-pdf-stamp)
    endif()
    foreach(called ${names})
        add_custom_command(OUTPUT completion/${called} completion/_${called}
            COMMAND ${CMAKE_COMMAND} -E make_directory completion
            COMMAND $<TARGET_FILE_DIR:${program}>/${called} --completion bash > completion/${called}
            COMMAND $<TARGET_FILE_DIR:${program}>/${called} --completion zsh > completion/_${called}
            DEPENDS ${program} VERBATIM)
        list(APPEND bash_completions ${PROJECT_BINARY_DIR}/completion/${called})
        list(APPEND zsh_completions ${PROJECT_BINARY_DIR}/completion/_${called})
    endforeach()
    if(HELP2MAN)
        file(STRINGS tools/${name}.cpp sentence LIMIT_COUNT 1)
        string(REGEX REPLACE "^// (.)(.*)\\.$" "\\1\\2" sentence "${sentence}")
        add_custom_command(OUTPUT ${program}.1
            COMMAND ${HELP2MAN} --no-info --help-option=--help-all --name=${sentence} --version-string=${PROJECT_VERSION}
                --source=${PROJECT_NAME} --output=${program}.1 $<TARGET_FILE:${program}>
            DEPENDS ${program} VERBATIM)
        list(APPEND pages ${PROJECT_BINARY_DIR}/${program}.1)
    endif()
endforeach()
# The same program under a name by which it draws above what is there.
if(TARGET files-pdf-background)
    install(CODE "execute_process(COMMAND \${CMAKE_COMMAND} -E create_symlink files-pdf-background
        \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}/files-pdf-stamp\")" COMPONENT tools)
endif()
# The guides, which messages of the programs name by this place.
file(GLOB guides docs/*.md)
install(FILES ${guides} README.md SECURITY.md DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/files-pdf COMPONENT tools)
add_custom_target(files-pdf-completion ALL DEPENDS ${bash_completions} ${zsh_completions})
install(FILES ${bash_completions} DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT tools)
install(FILES ${zsh_completions} DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions COMPONENT tools)
if(HELP2MAN)
    add_custom_target(files-pdf-man ALL DEPENDS ${pages})
    install(FILES ${pages} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools)
endif()
