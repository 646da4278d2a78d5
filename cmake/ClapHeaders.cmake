# The target `clap_abi` gives the CLAP types: the installed headers where they are 1.2.5 or later, else our own
# declarations of the same ABI. Everybody includes "abi/Clap.h" and sees no difference.
option(SORDELIN_SYSTEM_CLAP "Use installed CLAP headers when they are 1.2.5 or later" ON)

add_library(clap_abi INTERFACE)
set(root "${PROJECT_BINARY_DIR}/layers/clap_abi")
file(MAKE_DIRECTORY "${root}")
file(CREATE_LINK "${PROJECT_SOURCE_DIR}/host/abi" "${root}/abi" SYMBOLIC)
target_include_directories(clap_abi INTERFACE "${root}")

if(SORDELIN_SYSTEM_CLAP)
    find_package(clap 1.2.5 CONFIG QUIET)
endif()
if(clap_FOUND)
    message(STATUS "CLAP headers: installed, ${clap_VERSION}")
    target_link_libraries(clap_abi INTERFACE clap)
    target_compile_definitions(clap_abi INTERFACE SORDELIN_SYSTEM_CLAP=1)
else()
    message(STATUS "CLAP headers: our own declarations")
endif()
