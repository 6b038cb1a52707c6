if(TALLYFOLD_SANITIZE)
    add_compile_options(-fsanitize=${TALLYFOLD_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer -g)
    add_link_options(-fsanitize=${TALLYFOLD_SANITIZE})
endif()
