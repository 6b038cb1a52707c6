# The one home of our warning flags: every target of ours links this.
add_library(tallyfold_warnings INTERFACE)
target_compile_options(tallyfold_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow
    -Wold-style-cast -Woverloaded-virtual -Werror)
target_compile_definitions(tallyfold_warnings INTERFACE
    QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY)
