# embed_files(SOURCE FILE ...): makes SOURCE in the current binary folder, which defines workbench::PageFiles() with the
# content of the files (workbench/page/PageFile.h). It is made again when a file changes.
function(embed_files source)
    set(output "${CMAKE_CURRENT_BINARY_DIR}/${source}")
    set(script "${PROJECT_SOURCE_DIR}/cmake/WriteFilesAsSource.cmake")
    list(JOIN ARGN "|" files)
    add_custom_command(
        OUTPUT "${output}"
        COMMAND "${CMAKE_COMMAND}" "-DFILES=${files}" "-DOUTPUT=${output}" -P "${script}"
        DEPENDS ${ARGN} "${script}"
        COMMENT "Writing ${source}"
        VERBATIM)
endfunction()
