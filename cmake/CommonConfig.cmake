# What differs between the systems stands in a file for each, of which one is built: name_posix.cpp,
# name_windows.cpp.
if(WIN32)
    set(TARVO_SYSTEM windows)
else()
    set(TARVO_SYSTEM posix)
endif()

# What every target of the project shares: standard, warnings, strict Qt definitions.
add_library(tarvo_common INTERFACE)
target_compile_features(tarvo_common INTERFACE cxx_std_20)

target_compile_definitions(tarvo_common INTERFACE
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_CAST_FROM_BYTEARRAY
    QT_NO_URL_CAST_FROM_STRING
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
    QT_NO_KEYWORDS
    QT_NO_FOREACH
    QT_STRICT_ITERATORS
    QT_DISABLE_DEPRECATED_BEFORE=0x060400
    TARVO_VERSION="${PROJECT_VERSION}"
)

if(MSVC)
    target_compile_options(tarvo_common INTERFACE /W4 /utf-8 /permissive-)
else()
    target_compile_options(tarvo_common INTERFACE
        -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
        -Wimplicit-fallthrough -Wformat=2 -Wcast-qual -Wextra-semi -Werror
    )
endif()

if(MINGW)
    target_compile_definitions(tarvo_common INTERFACE UNICODE _UNICODE _WIN32_WINNT=0x0A00 WINVER=0x0A00 NOMINMAX
        WIN32_LEAN_AND_MEAN)
    # Seen where a text is put together out of pieces; the compiler for Linux sees nothing there.
    target_compile_options(tarvo_common INTERFACE -Wno-restrict)
    target_link_options(tarvo_common INTERFACE -fstack-protector-strong
        LINKER:--dynamicbase LINKER:--nxcompat LINKER:--high-entropy-va)
elseif(NOT MSVC)
    target_link_options(tarvo_common INTERFACE LINKER:-z,relro LINKER:-z,now)
endif()

if(TARVO_SANITIZE)
    target_compile_options(tarvo_common INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer -O1)
    target_link_options(tarvo_common INTERFACE -fsanitize=address,undefined)
endif()
