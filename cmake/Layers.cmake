# add_layer(<name> SOURCES ... DEPENDS ...)
#
# One static library per folder. Includes are written "<folder>/<File>.h"; each layer's include path holds
# nothing but a link to its own folder, so a header of a folder that isn't linked can't be found.
function(add_layer name)
    cmake_parse_arguments(LAYER "" "" "SOURCES;DEPENDS" ${ARGN})
    add_library(${name} STATIC ${LAYER_SOURCES})
    set(root "${PROJECT_BINARY_DIR}/layers/${name}")
    file(MAKE_DIRECTORY "${root}")
    file(CREATE_LINK "${CMAKE_CURRENT_SOURCE_DIR}" "${root}/${name}" SYMBOLIC)
    target_include_directories(${name} PUBLIC "${root}")
    target_link_libraries(${name} PUBLIC project_flags ${LAYER_DEPENDS})
    set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX)
endfunction()

# add_layer_tests(<name> SOURCES ... [DEPENDS ...])
#
# One test executable per layer, of the files tests/<name>/*Test.cpp. It runs in a temporary home.
function(add_layer_tests name)
    cmake_parse_arguments(LAYER "" "" "SOURCES;DEPENDS" ${ARGN})
    list(TRANSFORM LAYER_SOURCES PREPEND "${name}/")
    add_executable(${name}_tests ${LAYER_SOURCES} support/TemporaryHomeEnvironment.cpp)
    target_link_libraries(${name}_tests PRIVATE ${name} test_support ${LAYER_DEPENDS} GTest::gtest GTest::gtest_main)
    add_test(NAME ${name} COMMAND ${name}_tests)
endfunction()
