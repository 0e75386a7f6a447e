# One place for warnings, Qt defines and sanitizers; every target links it.
add_library(veldtone_options INTERFACE)
target_compile_options(veldtone_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wold-style-cast -Wnon-virtual-dtor)
if(VELDTONE_WERROR)
    target_compile_options(veldtone_options INTERFACE -Werror)
endif()
target_compile_definitions(veldtone_options INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_URL_CAST_FROM_STRING
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_USE_QSTRINGBUILDER
    VELDTONE_VERSION="${PROJECT_VERSION}")
if(VELDTONE_SANITIZE)
    target_compile_options(veldtone_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_link_options(veldtone_options INTERFACE -fsanitize=address,undefined)
endif()
