# The Debian packages, which CPack makes of the components of Install.cmake; scripts/package calls it.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME dorvel-bacnet)
set(CPACK_PACKAGE_VENDOR "the authors of dorvel_bacnet")
set(CPACK_PACKAGE_CONTACT "The authors of dorvel_bacnet <authors@dorvel-bacnet.invalid>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
    WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)
# CPack has its own use for the folder of a component with the name PACKAGE-dbgsym.
set(CPACK_COMPONENTS_ALL driver driver-symbols)
if(NOT CMAKE_CROSSCOMPILING)
    list(APPEND CPACK_COMPONENTS_ALL tools tools-symbols)
endif()

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SOURCE dorvel-bacnet)
if(CMAKE_CROSSCOMPILING)
    set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE armhf)
else()
    execute_process(COMMAND dpkg --print-architecture OUTPUT_VARIABLE CPACK_DEBIAN_PACKAGE_ARCHITECTURE
                    OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
endif()
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME dorvel-bacnet-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION net)
set(CPACK_DEBIAN_TOOLS_DESCRIPTION "workbench and simulator for BACnet/IP plants
dorvel-workbench finds BACnet devices, writes projects for a PLC and SCADA
runtime, checks and runs them with the driver of that runtime, and compares
their points with the devices. It shows a running plant in a terminal and in
a browser, and passes its values on.

bacnet-simulator simulates BACnet devices and their faults.")
foreach(script postinst prerm postrm)
    list(APPEND CPACK_DEBIAN_TOOLS_PACKAGE_CONTROL_EXTRA "${PROJECT_SOURCE_DIR}/packaging/tools/${script}")
endforeach()
set(CPACK_DEBIAN_DRIVER_PACKAGE_NAME dorvel-bacnet-driver)
set(CPACK_DEBIAN_DRIVER_PACKAGE_SECTION net)
set(CPACK_DEBIAN_DRIVER_DESCRIPTION "BACnet/IP client driver for a PLC and SCADA runtime
The add-in dorvel_bacnet.so, which the runtime loads. Each function block of
the type BACnet polls the objects of one BACnet device and writes values to
it.

The runtime brings the libraries that it shares with its add-ins: Lua,
opcua.so, dorvelshare.so and dorvel.so. They are no dependencies of this
package.")
foreach(package tools driver)
    string(TOUPPER "${package}" upper)
    set(CPACK_DEBIAN_${upper}-SYMBOLS_PACKAGE_NAME dorvel-bacnet-${package}-dbgsym)
    set(CPACK_DEBIAN_${upper}-SYMBOLS_PACKAGE_SECTION debug)
    set(CPACK_DEBIAN_${upper}-SYMBOLS_DESCRIPTION "debug symbols for dorvel-bacnet-${package}
Debuggers find these files by the build ids of the programs and libraries.")
endforeach()

# Read by PackageSettings.cmake and FinishPackages.cmake.
set(CPACK_DORVEL_BIN "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")
set(CPACK_DORVEL_HOST ${HOST})
set(CPACK_DORVEL_SYSROOT "${DORVEL_SYSROOT}")
set(CPACK_PROJECT_CONFIG_FILE "${PROJECT_SOURCE_DIR}/cmake/PackageSettings.cmake")
set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/cmake/FinishPackages.cmake")
include(CPack)
