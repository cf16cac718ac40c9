# quillon_tree: what whoever includes a header of the tree needs, the language level and the root of
# all includes. quillon_options: what is compiled here, warnings, sanitizers and the form in which
# assertions name their source file; targets link it privately, so that none of it gets further.

set(QUILLON_SANITIZE "" CACHE STRING "Sanitizers to build with, as in -fsanitize=")

# Assertions stay on in every build type.
foreach(config RELEASE RELWITHDEBINFO MINSIZEREL)
    string(REPLACE "-DNDEBUG" "" CMAKE_CXX_FLAGS_${config} "${CMAKE_CXX_FLAGS_${config}}")
endforeach()

add_library(quillon_tree INTERFACE)
target_compile_features(quillon_tree INTERFACE cxx_std_20)
target_include_directories(quillon_tree INTERFACE ${PROJECT_SOURCE_DIR})

add_library(quillon_options INTERFACE)
target_link_libraries(quillon_options INTERFACE quillon_tree)
target_compile_options(quillon_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual -Werror
    -fmacro-prefix-map=${PROJECT_SOURCE_DIR}=Quillon
    -fvisibility=hidden -fvisibility-inlines-hidden) # Qt asks for -fPIC: let calls be inlined still
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # GCC 12 reports overlapping copies inside std::string where there are none (GCC bug 105651).
    target_compile_options(quillon_options INTERFACE -Wno-restrict)
endif()
target_compile_definitions(quillon_options INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_KEYWORDS
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT)

if(QUILLON_SANITIZE)
    target_compile_options(quillon_options INTERFACE
        -fsanitize=${QUILLON_SANITIZE} -fno-omit-frame-pointer)
    target_link_options(quillon_options INTERFACE -fsanitize=${QUILLON_SANITIZE})
    if(QUILLON_SANITIZE MATCHES "undefined")
        target_compile_options(quillon_options INTERFACE -fno-sanitize-recover=all)
    endif()
endif()
