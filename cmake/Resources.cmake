# add_resource_table(<name> [OBJECT] FILES ...)
#
# A static library that carries the FILES, each under its stem in upper case, behind the header ResourceTable.h. The
# assembler takes in their bytes, so that no compiler has to read them as numbers. With OBJECT it is the table of a
# program that links it itself, and goes before the one that comes with the layers.
function(add_resource_table name)
    cmake_parse_arguments(TABLE "OBJECT" "" "FILES" ${ARGN})
    set(declarations "")
    set(entries "")
    set(names "")
    foreach(file IN LISTS TABLE_FILES)
        get_filename_component(stem "${file}" NAME_WLE)
        string(TOUPPER "${stem}" stem)
        if(stem IN_LIST names)
            message(FATAL_ERROR "Two resources are named ${stem}")
        endif()
        list(LENGTH names number)
        list(APPEND names "${stem}")
        string(APPEND declarations "CARRY(sordelin_resource_${number}, \"${file}\")\n")
        string(APPEND entries
            "    CarriedResource{\"${stem}\", {sordelin_resource_${number}, sordelin_resource_${number}_end}},\n")
    endforeach()

    set(source "${CMAKE_CURRENT_BINARY_DIR}/ResourceTable.cpp")
    configure_file("${PROJECT_SOURCE_DIR}/cmake/ResourceTable.cpp.in" "${source}" @ONLY)
    set_source_files_properties("${source}" PROPERTIES OBJECT_DEPENDS "${TABLE_FILES}")
    if(TABLE_OBJECT)
        add_library(${name} OBJECT "${source}")
        target_link_libraries(${name} PRIVATE resources)
    else()
        add_layer(${name} SOURCES "${source}")
    endif()
endfunction()
