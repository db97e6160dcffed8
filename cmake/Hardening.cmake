# What distributions build with against memory errors: guards of the stack, checked calls of the C library, and tables
# of the loader that nothing can write to once the program runs. Sanitizers have checks of their own.
include(CheckLinkerFlag)
check_linker_flag(CXX -Wl,-z,relro,-z,now FILES_PDF_HAS_RELRO)

function(files_pdf_hardening target)
    # Guards in all functions of the core that have the address of a local would cost 2.6 % of the instructions of a
    # save. There those with arrays of characters have one.
    if(target STREQUAL files-pdf-objects)
        target_compile_options(${target} PRIVATE -fstack-protector)
    else()
        target_compile_options(${target} PRIVATE -fstack-protector-strong)
    endif()
    if(FILES_PDF_HAS_RELRO)
        target_link_options(${target} PRIVATE -Wl,-z,relro,-z,now)
    endif()
    # It needs an optimizing compiler, which a sanitizer would find the calls hidden from. The compiler of a
    # distribution may define it already.
    if(NOT files_pdf_sanitizers)
        target_compile_options(${target} PRIVATE
            "$<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
    endif()
    # The checks of the standard library: of every index, iterator and empty optional.
    target_compile_definitions(${target} PRIVATE $<$<CONFIG:Debug>:_GLIBCXX_ASSERTIONS>)
endfunction()
