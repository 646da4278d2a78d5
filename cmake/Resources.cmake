# add_resource_table(<name> FILES ...)
#
# A static library that carries the FILES, each under its stem in upper case, behind the header ResourceTable.h. The
# assembler takes in their bytes, so that no compiler has to read them as numbers.
function(add_resource_table name)
    cmake_parse_arguments(TABLE "" "" "FILES" ${ARGN})
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
    add_layer(${name} SOURCES "${source}")
endfunction()
