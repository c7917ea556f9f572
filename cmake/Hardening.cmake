# Hardening of what ships, for the folder that includes it. The sanitizers bring their own, and fortified
# calls need an optimizer. What the linker adds stands in CommonConfig.cmake.
if(NOT MSVC AND NOT TARVO_SANITIZE AND NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
    add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2 -fstack-protector-strong)
    # Windows probes the pages of a stack by itself, and the compiler for it breaks down over this.
    if(NOT MINGW)
        add_compile_options(-fstack-clash-protection)
    endif()
endif()
