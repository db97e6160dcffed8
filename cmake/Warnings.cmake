# The warnings that the project builds with; each is an error.
function(files_pdf_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Werror
        # g++ 12 warns of overlaps in inlined operations of std::string that can't happen.
        $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
    if(FILES_PDF_SANITIZE)
        target_compile_options(${target} PUBLIC
            -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
        target_link_options(${target} PUBLIC -fsanitize=address,undefined)
    endif()
endfunction()
