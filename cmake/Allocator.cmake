# Programs that parse many files link this: half of that is allocating small objects, and mimalloc does it in half the time.
# It takes the place of malloc by being loaded, so the linker has to keep it though nobody calls it by name. The sanitizers
# bring allocators of their own.
add_library(tallyfold_allocator INTERFACE)
if(NOT TALLYFOLD_SANITIZE)
    find_package(mimalloc 2.0 REQUIRED)
    target_link_libraries(tallyfold_allocator INTERFACE -Wl,--push-state,--no-as-needed mimalloc -Wl,--pop-state)
endif()
