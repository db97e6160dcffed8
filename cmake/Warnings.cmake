# How everything of the project is compiled: warnings, each of which is an error, hardening, and the sanitizers asked for.
if(FILES_PDF_TSAN)
    set(files_pdf_sanitizers thread)
elseif(FILES_PDF_SANITIZE)
    set(files_pdf_sanitizers address,undefined)
endif()

function(files_pdf_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Werror
        # g++ 12 warns of overlaps in inlined operations of std::string that can't happen.
        $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
    if(files_pdf_sanitizers)
        target_compile_options(${target} PUBLIC
            -fsanitize=${files_pdf_sanitizers} -fno-sanitize-recover=all -fno-omit-frame-pointer)
        target_link_options(${target} PUBLIC -fsanitize=${files_pdf_sanitizers})
    endif()
    files_pdf_hardening(${target})
    if(FILES_PDF_FUZZ)
        # What libFuzzer watches, and the checks of the standard library.
        target_compile_options(${target} PUBLIC -fsanitize=fuzzer-no-link)
        target_compile_definitions(${target} PUBLIC _GLIBCXX_ASSERTIONS)
    endif()
endfunction()
