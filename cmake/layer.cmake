# td_layer(NAME [FOLDER folder] USES ...): one folder of src/ as one static library.
#
# USES lists the folders that NAME may include, and nothing else; base and report are free to all
# above them. The same table is checked against the #include lines by tests/style.
function(td_layer name)
    cmake_parse_arguments(LAYER "" "FOLDER" "USES" ${ARGN})
    if(NOT LAYER_FOLDER)
        set(LAYER_FOLDER ${name})
    endif()
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${LAYER_FOLDER}/*.cpp)
    list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
    if(NOT sources)
        add_library(${name} INTERFACE)
        return()
    endif()
    add_library(${name} STATIC ${sources})
    target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(${name} PUBLIC fmt::fmt ${LAYER_USES} PRIVATE td_warnings)
    target_precompile_headers(${name} PRIVATE ${CMAKE_SOURCE_DIR}/cmake/common.h)
endfunction()
