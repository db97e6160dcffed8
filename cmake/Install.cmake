# What `cmake --install` puts where, in three components that are three Debian packages for `cpack`: the
# libraries at runtime, what programs are developed with, and the tools with their manual pages.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/FilesPDF)

# Libraries find each other, and programs the libraries, by where they are: the same in the build tree, where a link
# has the place of the installed folder. What CMake makes of two different paths has an empty entry, the folder in which
# the program is started.
function(files_pdf_beside_others target)
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "\$ORIGIN" BUILD_WITH_INSTALL_RPATH ON)
endfunction()
files_pdf_beside_others(files-pdf-host)
get_filename_component(libraries ${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR} DIRECTORY)
file(MAKE_DIRECTORY ${libraries})
file(CREATE_LINK ${PROJECT_BINARY_DIR} ${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR} SYMBOLIC)

# What needs the optional libraries is exported with them.
set(targets files-pdf files-pdf-host)
set(loader_requires files-pdf-host)
if(FILES_PDF_IMPORT AND NOT BUILD_SHARED_LIBS)
    set(loader_requires files-pdf-import)
else()
    list(APPEND targets files-pdf-import-loader)
endif()
set(text_loader_requires files-pdf-host)
if(FILES_PDF_TEXT AND NOT BUILD_SHARED_LIBS)
    set(text_loader_requires files-pdf-text)
else()
    list(APPEND targets files-pdf-text-loader)
endif()
install(TARGETS ${targets} EXPORT FilesPDFTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/files-pdf COMPONENT development)
install(EXPORT FilesPDFTargets NAMESPACE FilesPDF:: DESTINATION ${package_dir} COMPONENT development)
configure_package_config_file(cmake/FilesPDFConfig.cmake.in FilesPDFConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(FilesPDFConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/FilesPDFConfig.cmake ${PROJECT_BINARY_DIR}/FilesPDFConfigVersion.cmake
    DESTINATION ${package_dir} COMPONENT development)

# A static library leaves zlib, and libqpdf, to the program. The prefix is found from the file's own place, so that the
# installed tree may be moved.
set(requires_zlib Requires)
if(BUILD_SHARED_LIBS)
    set(requires_zlib Requires.private)
endif()
string(REGEX REPLACE "[^/]+" ".." from_pc_to_prefix ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
foreach(library files-pdf files-pdf-host files-pdf-import-loader files-pdf-text-loader)
    configure_file(cmake/${library}.pc.in ${library}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${library}.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
endforeach()

install(FILES LICENSE NOTICE DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT runtime)
if(FILES_PDF_TOOLS)
    include(cmake/Tools.cmake)
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_VENDOR "${PROJECT_NAME}")
set(CPACK_PACKAGE_CONTACT "${PROJECT_NAME} maintainers <files-pdf@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime development)
if(FILES_PDF_TOOLS)
    list(APPEND CPACK_COMPONENTS_ALL tools)
endif()
if(FILES_PDF_IMPORT)
    include(cmake/Import.cmake)
endif()
if(FILES_PDF_TEXT)
    include(cmake/Text.cmake)
endif()
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "The shared libraries.")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "Headers, CMake package and pkg-config files.")
set(CPACK_COMPONENT_TOOLS_DESCRIPTION "Programs that look into PDF files, fill forms and save.")
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)
set(CPACK_COMPONENT_TOOLS_DEPENDS runtime)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libfiles-pdf${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libfiles-pdf-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS zlib1g-dev)
set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME files-pdf-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION text)
set(CPACK_DEBIAN_TOOLS_PACKAGE_RECOMMENDS libfiles-pdf-import${PROJECT_VERSION_MAJOR}) # loaded when a file needs it
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR})
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
include(CPack)
