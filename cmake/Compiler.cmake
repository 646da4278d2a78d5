# Flags that every target of the project shares, as the interface target `project_flags`.
add_library(project_flags INTERFACE)

target_compile_options(project_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
    # Every path must round alike, whatever instruction set it is built for.
    -ffp-contract=off)
if(SORDELIN_WERROR)
    target_compile_options(project_flags INTERFACE -Werror)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # A unique symbol would pin the module in its host: dlclose could not unload it.
    target_compile_options(project_flags INTERFACE -fno-gnu-unique)
endif()

if(CMAKE_UNITY_BUILD)
    # Several sources in one: names of one's own meet those of others.
    target_compile_options(project_flags INTERFACE -Wno-shadow -Wno-subobject-linkage -Wno-maybe-uninitialized)
endif()

if(SORDELIN_SANITIZE)
    target_compile_options(project_flags INTERFACE
        -fsanitize=${SORDELIN_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(project_flags INTERFACE -fsanitize=${SORDELIN_SANITIZE})
    target_compile_definitions(project_flags INTERFACE SORDELIN_SANITIZED=1)
endif()
