# What `cmake --install` puts where of the text library, in two components of its own, so that the packages of the
# others don't depend on HarfBuzz and fontconfig. Its headers are among those of the others: the loader needs them, too.
files_pdf_beside_others(files-pdf-text)
set(text_targets files-pdf-text)
if(NOT BUILD_SHARED_LIBS)
    list(APPEND text_targets files-pdf-text-loader)
endif()
install(TARGETS ${text_targets} EXPORT FilesPDFTextTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT text NAMELINK_COMPONENT text_development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT text_development
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/files-pdf COMPONENT development)
install(EXPORT FilesPDFTextTargets NAMESPACE FilesPDF:: DESTINATION ${package_dir} COMPONENT text_development)
configure_file(cmake/files-pdf-text.pc.in files-pdf-text.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/files-pdf-text.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT text_development)

list(APPEND CPACK_COMPONENTS_ALL text text_development)
set(CPACK_COMPONENT_TEXT_DESCRIPTION "The shared library that draws text in any script.")
set(CPACK_COMPONENT_TEXT_DEVELOPMENT_DESCRIPTION "What programs are linked with it by.")
set(CPACK_COMPONENT_TEXT_DEPENDS runtime)
set(CPACK_COMPONENT_TEXT_DEVELOPMENT_DEPENDS text development)
set(CPACK_DEBIAN_TEXT_PACKAGE_NAME libfiles-pdf-text${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_TEXT_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_TEXT_DEVELOPMENT_PACKAGE_NAME libfiles-pdf-text-dev)
set(CPACK_DEBIAN_TEXT_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_TEXT_DEVELOPMENT_PACKAGE_DEPENDS "libharfbuzz-dev, libfribidi-dev, libfontconfig-dev")
