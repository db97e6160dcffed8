# The headers of a folder that applications may include: those that mark something EXPORTED, and what they
# need besides.
function(files_pdf_public_headers folder result)
    file(GLOB headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*.h)
    set(public)
    foreach(header ${headers})
        file(STRINGS ${header} marked REGEX EXPORTED LIMIT_COUNT 1)
        if(marked)
            list(APPEND public ${header})
        endif()
    endforeach()
    set(needed
        platform/Mem platform/Ref platform/TConstArray platform/TVector values/Compression
        platform/Limits host/base/Refusal host/base/Result
        host/files/Descriptor host/files/MemoryStripe host/files/StripeOver host/files/Target host/fields/FieldValue
        host/pages/Layer host/pages/Rectangle host/streams/Predictor
        import/Loader import/Options import/Report text/Loader)
    list(FILTER needed INCLUDE REGEX "^${folder}/[^/]+$")
    foreach(name ${needed})
        list(APPEND public ${PROJECT_SOURCE_DIR}/${name}.h)
    endforeach()
    set(${result} ${public} PARENT_SCOPE)
endfunction()

# files_pdf_library(TARGET NAME FOLDER...): the library of the objects TARGET-objects, known to others as
# FilesPDF::NAME, with the public headers of the folders.
function(files_pdf_library target name)
    set(headers)
    foreach(folder ${ARGN})
        files_pdf_public_headers(${folder} public)
        list(APPEND headers ${public})
    endforeach()
    add_library(${target} $<TARGET_OBJECTS:${target}-objects>)
    add_library(FilesPDF::${name} ALIAS ${target})
    target_sources(${target} PUBLIC FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR} FILES ${headers})
    target_compile_features(${target} PUBLIC cxx_std_20)
    files_pdf_warnings(${target})
    set_target_properties(${target} PROPERTIES EXPORT_NAME ${name}
        VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
    if(BUILD_SHARED_LIBS)
        configure_file(${PROJECT_SOURCE_DIR}/cmake/symbols.map.in ${PROJECT_BINARY_DIR}/symbols.map @ONLY)
        # Calls within the library go to its own functions: names such as Pool are plain, and another library in the
        # program may have them, too.
        target_link_options(${target} PRIVATE -Wl,-Bsymbolic-functions
            -Wl,--version-script=${PROJECT_BINARY_DIR}/symbols.map)
        set_target_properties(${target} PROPERTIES LINK_DEPENDS ${PROJECT_BINARY_DIR}/symbols.map)
    endif()
endfunction()
