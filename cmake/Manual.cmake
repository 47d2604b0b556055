# The manual pages and the completion of the programs, made from their tables of options and from the documents. The
# target `manual` writes those of a program into manual/NAME of the build: man/man1, man/man5, bash and zsh. It is part of
# a release; elsewhere it is made on request. A cross compiler's programs cannot write them.

set(MANUAL_FOLDER "${PROJECT_BINARY_DIR}/manual")

if(CMAKE_BUILD_TYPE STREQUAL "Release" AND NOT CMAKE_CROSSCOMPILING)
    add_custom_target(manual ALL)
else()
    add_custom_target(manual)
endif()

# add_manual(NAME USES ...): the pages of a program by the generator below the folder manual, which is not installed. The
# folder of the pages is emptied first, so that nothing stays of a command that is gone.
function(add_manual name)
    if(CMAKE_CROSSCOMPILING)
        return()
    endif()
    cmake_parse_arguments(MANUAL "" "" "USES" ${ARGN})
    set(generator ${name}-manual)
    file(GLOB sources CONFIGURE_DEPENDS manual/*.cpp)
    add_executable(${generator} EXCLUDE_FROM_ALL ${sources})
    target_include_directories(${generator} PRIVATE manual)
    target_link_libraries(${generator} PRIVATE tools_manual ${MANUAL_USES})
    set_target_properties(${generator} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}")
    file(GLOB documents CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/docs/*.md")
    set(stamp "${CMAKE_CURRENT_BINARY_DIR}/${generator}.stamp")
    add_custom_command(
        OUTPUT "${stamp}"
        COMMAND "${CMAKE_COMMAND}" -E rm -rf "${MANUAL_FOLDER}/${name}"
        COMMAND ${generator} "${PROJECT_VERSION}" "${MANUAL_FOLDER}/${name}" "${PROJECT_SOURCE_DIR}/docs"
        COMMAND "${CMAKE_COMMAND}" -E touch "${stamp}"
        DEPENDS ${generator} ${documents}
        COMMENT "Writing the manual of ${name}"
        VERBATIM)
    add_custom_target(${name}-pages DEPENDS "${stamp}")
    add_dependencies(manual ${name}-pages)
endfunction()
