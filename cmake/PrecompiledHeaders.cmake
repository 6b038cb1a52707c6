# Half of the time of compiling goes into reading the same headers of the libraries. Under the sanitizers they are read once
# for each target. In the other builds every file still has to name what it uses.
#
# tallyfold_precompile(TARGET HEADER...): HEADER as in an include of angle brackets.
function(tallyfold_precompile target)
    if(TALLYFOLD_SANITIZE AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        list(TRANSFORM ARGN PREPEND "<")
        list(TRANSFORM ARGN APPEND ">")
        target_precompile_headers(${target} PRIVATE ${ARGN})
    endif()
endfunction()

set(TALLYFOLD_STANDARD_HEADERS algorithm filesystem functional map memory optional string variant vector)
set(TALLYFOLD_TEST_HEADERS ${TALLYFOLD_STANDARD_HEADERS} gtest/gtest.h QString)
