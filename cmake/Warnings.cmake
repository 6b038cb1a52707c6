# The one home of our warning flags: every target of ours links this.
add_library(tallyfold_warnings INTERFACE)
target_compile_options(tallyfold_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow
    -Wold-style-cast -Woverloaded-virtual -Werror)
target_compile_definitions(tallyfold_warnings INTERFACE
    QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY)
if(TALLYFOLD_SANITIZE AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # g++ 12 sees uninitialised members in std::regex, and a move of a short string as one of many bytes, once a sanitizer
    # has rewritten them.
    target_compile_options(tallyfold_warnings INTERFACE -Wno-maybe-uninitialized -Wno-array-bounds
        -Wno-stringop-overflow -Wno-restrict)
endif()
