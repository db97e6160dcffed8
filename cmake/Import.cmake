# What `cmake --install` puts where of the import library, in two components of its own, so that the packages of the
# others don't depend on libqpdf. Its headers are among those of the others: the loader needs them, too.
files_pdf_beside_others(files-pdf-import)
set(import_targets files-pdf-import)
if(NOT BUILD_SHARED_LIBS)
    list(APPEND import_targets files-pdf-import-loader)
endif()
install(TARGETS ${import_targets} EXPORT FilesPDFImportTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT import NAMELINK_COMPONENT import_development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT import_development
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/files-pdf COMPONENT development)
install(EXPORT FilesPDFImportTargets NAMESPACE FilesPDF:: DESTINATION ${package_dir} COMPONENT import_development)
configure_file(cmake/files-pdf-import.pc.in files-pdf-import.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/files-pdf-import.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT import_development)

list(APPEND CPACK_COMPONENTS_ALL import import_development)
set(CPACK_COMPONENT_IMPORT_DESCRIPTION "The shared library that opens any PDF file, by libqpdf.")
set(CPACK_COMPONENT_IMPORT_DEVELOPMENT_DESCRIPTION "What programs are linked with it by.")
set(CPACK_COMPONENT_IMPORT_DEPENDS runtime)
set(CPACK_COMPONENT_IMPORT_DEVELOPMENT_DEPENDS import development)
set(CPACK_DEBIAN_IMPORT_PACKAGE_NAME libfiles-pdf-import${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_IMPORT_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_IMPORT_DEVELOPMENT_PACKAGE_NAME libfiles-pdf-import-dev)
set(CPACK_DEBIAN_IMPORT_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_IMPORT_DEVELOPMENT_PACKAGE_DEPENDS libqpdf-dev)
