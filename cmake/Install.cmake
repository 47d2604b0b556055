# What `cmake --install` puts where. Programs and libraries find one another by paths relative to themselves, so any
# prefix works. The component "driver" is the add-in alone, "tools" is everything else.

set(DORVEL_LIBRARIES lib/dorvel-bacnet)
set(DORVEL_DOCUMENTS share/doc/dorvel-bacnet-tools)

if(NOT DORVEL_SDK)
    install(TARGETS dorvel-workbench bacnet-simulator RUNTIME DESTINATION bin COMPONENT tools)
    set_target_properties(dorvel-workbench bacnet-simulator PROPERTIES INSTALL_RPATH "$ORIGIN/../${DORVEL_LIBRARIES}")
    install(TARGETS ${HOST} LIBRARY DESTINATION "${DORVEL_LIBRARIES}" COMPONENT tools)
endif()

# A runtime has loaded its libraries before it loads an add-in, so the add-in searches for none.
install(TARGETS dorvel_bacnet LIBRARY DESTINATION "${DORVEL_LIBRARIES}" COMPONENT driver)
set_target_properties(dorvel_bacnet PROPERTIES INSTALL_RPATH "")
install(FILES packaging/driver/copyright DESTINATION share/doc/dorvel-bacnet-driver COMPONENT driver)

# The debug symbols of a package, by the build ids of its files: only with `--component tools-symbols` or `driver-symbols`.
function(install_debug_symbols package)
    foreach(target IN LISTS ARGN)
        install(CODE "set(FILE \"$<TARGET_FILE:${target}>\")
                      set(READELF \"${CMAKE_READELF}\")
                      set(OBJCOPY \"${CMAKE_OBJCOPY}\")
                      include(\"${PROJECT_SOURCE_DIR}/cmake/InstallDebugSymbols.cmake\")"
                COMPONENT ${package}-symbols EXCLUDE_FROM_ALL)
    endforeach()
endfunction()
install_debug_symbols(driver dorvel_bacnet)

if(DORVEL_SDK OR CMAKE_CROSSCOMPILING)
    return()
endif()

install_debug_symbols(tools dorvel-workbench bacnet-simulator ${HOST})

install(DIRECTORY examples/ DESTINATION share/dorvel-bacnet/examples COMPONENT tools)

# The documents of users. Those of developers are with the sources.
install(FILES README.md CHANGELOG.md packaging/tools/copyright DESTINATION "${DORVEL_DOCUMENTS}" COMPONENT tools)
install(DIRECTORY docs DESTINATION "${DORVEL_DOCUMENTS}" COMPONENT tools
        PATTERN architecture.* EXCLUDE PATTERN extending.md EXCLUDE PATTERN fuzzing.md EXCLUDE
        PATTERN growth.svg EXCLUDE PATTERN rooms.svg EXCLUDE PATTERN testing.md EXCLUDE)

# Manual pages and completion, which the target `manual` writes, and the service.
foreach(program workbench simulator)
    set(pages "${PROJECT_BINARY_DIR}/manual/${program}")
    install(DIRECTORY "${pages}/man" DESTINATION share COMPONENT tools)
    install(DIRECTORY "${pages}/bash/" DESTINATION share/bash-completion/completions COMPONENT tools)
    install(DIRECTORY "${pages}/zsh/" DESTINATION share/zsh/vendor-completions COMPONENT tools)
endforeach()
install(FILES packaging/dorvel-workbench@.service DESTINATION lib/systemd/system COMPONENT tools)
