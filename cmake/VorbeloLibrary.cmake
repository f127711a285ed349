# vorbelo_library(NAME [DEPENDS libs...]): one static library out of all sources of the calling
# folder. The folder itself is its only public include directory, so that an include against the
# arrows of docs/architecture.md does not compile.
function(vorbelo_library name)
    cmake_parse_arguments(arg "" "" "DEPENDS;SUBFOLDERS" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h *.ui *.qrc)
    foreach(folder IN LISTS arg_SUBFOLDERS)
        file(GLOB more CONFIGURE_DEPENDS ${folder}/*.cpp ${folder}/*.h ${folder}/*.ui ${folder}/*.qrc)
        list(APPEND sources ${more})
    endforeach()
    if(NOT sources)
        return()
    endif()
    add_library(${name} STATIC ${sources})
    if(arg_SUBFOLDERS)
        list(TRANSFORM arg_SUBFOLDERS PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/ OUTPUT_VARIABLE includes)
    else()
        set(includes ${CMAKE_CURRENT_SOURCE_DIR})
    endif()
    target_include_directories(${name} PUBLIC ${includes})
    target_link_libraries(${name} PUBLIC ${arg_DEPENDS})
endfunction()

# The headers that nearly every file of a folder with windows reads.
function(vorbelo_precompile_widgets name)
    if(TARGET ${name})
        target_precompile_headers(${name} PRIVATE <QtWidgets> <functional> <memory> <optional> <vector>)
    endif()
endfunction()
