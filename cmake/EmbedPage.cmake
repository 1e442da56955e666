# Writes the C++ source that holds the style and the script of the HTML pages:
#
#   cmake -DOUTPUT=page_texts.cpp "-DSTYLE=a.css" "-DSCRIPT=a.js,b.js" -P EmbedPage.cmake
#
# Several files of one kind are joined in their order.

# base64_of_hash(<result> <text>): the SHA-256 of the text in base64; three hexadecimal digits are
# two digits of base64, and the one digit that is left makes one more.
function(base64_of_hash result text)
    set(digits ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/)
    string(SHA256 hash "${text}")
    set(base64 "")
    foreach(at RANGE 0 60 3)
        string(SUBSTRING ${hash} ${at} 3 part)
        math(EXPR high "0x${part} / 64")
        math(EXPR low "0x${part} % 64")
        string(SUBSTRING ${digits} ${high} 1 first)
        string(SUBSTRING ${digits} ${low} 1 second)
        string(APPEND base64 ${first}${second})
    endforeach()
    string(SUBSTRING ${hash} 63 1 part)
    math(EXPR last "0x${part} * 4")
    string(SUBSTRING ${digits} ${last} 1 first)
    set(${result} "${base64}${first}=" PARENT_SCOPE)
endfunction()

# embed(<name> <files>): the functions page_<name> and page_<name>_hash.
function(embed name files)
    string(REPLACE "," ";" files "${files}")
    set(text "\n")
    foreach(file IN LISTS files)
        file(READ ${file} part)
        string(APPEND text "${part}")
    endforeach()
    string(LENGTH "${text}" length)
    string(FIND "${text}" ")page\"" end_of_literal)
    string(REGEX MATCH "</(script|style)" end_of_element "${text}")
    if(length GREATER 60000 OR end_of_literal GREATER -1 OR end_of_element)
        message(FATAL_ERROR "${files}: too long, or with text that would end the literal or element")
    endif()
    base64_of_hash(hash "${text}")
    string(APPEND source "
std::string_view page_${name}() {
    return R\"page(${text})page\";
}
std::string_view page_${name}_hash() { return \"sha256-${hash}\"; }
")
    set(source "${source}" PARENT_SCOPE)
endfunction()

set(source "// Made by cmake/EmbedPage.cmake.
#include \"draw/page_texts.h\"

namespace nmk_draw {
")
embed(style "${STYLE}")
embed(script "${SCRIPT}")
file(WRITE ${OUTPUT} "${source}
}  // namespace nmk_draw
")
