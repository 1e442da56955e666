# Compiler settings that every target of the project shares.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

option(NMKTOOLBOX_WARNINGS_AS_ERRORS "Treat warnings in the project's own code as errors" OFF)
option(NMKTOOLBOX_TRANSLATE_FAULTS "Compile so that faults can be thrown through (GCC only)" ON)
set(NMKTOOLBOX_SANITIZE "" CACHE STRING "Sanitizers, as -fsanitize= takes them")

find_program(NMKTOOLBOX_CCACHE ccache)
if(NMKTOOLBOX_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    # Precompiled headers are taken for what they were made of: without these settings ccache misses
    # every source that uses one, whenever the header was compiled anew.
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
        CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
        "${NMKTOOLBOX_CCACHE}")
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        add_compile_options(-fpch-preprocess)
    endif()
endif()

# One formula gives the same bits on every compiler, level of optimisation and processor.
add_compile_options(-ffp-contract=off)
# A fault of the processor can leave any instruction as an exception, and destructors run. Other
# compilers cannot do that. Frames are probed page by page, so that none is beyond the stack.
if(NMKTOOLBOX_TRANSLATE_FAULTS AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_compile_options(-fnon-call-exceptions -fstack-clash-protection)
endif()
if(NMKTOOLBOX_SANITIZE)
    # -O1 and lines only: quicker to compile, and reports name the same places.
    add_compile_options(-fsanitize=${NMKTOOLBOX_SANITIZE} -fno-omit-frame-pointer
                        -fno-sanitize-recover=all -O1 -g1)
    add_link_options(-fsanitize=${NMKTOOLBOX_SANITIZE})
endif()

# nmk_own_code(target): the warnings that our own code is held to.
function(nmk_own_code target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
    # GCC 12 sees overlaps and overflows in every optimised "text" + std::string; GCC 13 no longer
    # does.
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        target_compile_options(${target} PRIVATE -Wno-restrict -Wno-stringop-overflow
                               -Wno-array-bounds)
        # What a sanitizer adds hides from it that the parts of std::regex are made before their use.
        if(NMKTOOLBOX_SANITIZE)
            target_compile_options(${target} PRIVATE -Wno-maybe-uninitialized)
        endif()
    endif()
    if(NMKTOOLBOX_WARNINGS_AS_ERRORS)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()
