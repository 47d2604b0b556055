# Read by CPack before it makes packages: what depends on the built files and on the machine.

cmake_policy(VERSION 3.22)

# package_depends(VARIABLE FILES ... EXCLUDE ...): the packages whose libraries the files need, by dpkg-shlibdeps. For the
# target they are compared with Debian's packages for it, which scripts/sysroot-armhf has unpacked.
function(package_depends variable)
    cmake_parse_arguments(NEED "" "" "FILES;EXCLUDE" ${ARGN})
    # It refuses to work without this file.
    set(folder "${CPACK_PACKAGE_DIRECTORY}/_CPack_Packages/depends")
    file(WRITE "${folder}/debian/control" "Source: dorvel-bacnet\n\nPackage: dorvel-bacnet\nArchitecture: any\n")
    set(options --ignore-missing-info -O "-l${CPACK_DORVEL_BIN}")
    foreach(package IN LISTS NEED_EXCLUDE)
        list(APPEND options "-x${package}")
    endforeach()
    set(machine "")
    if(CPACK_DORVEL_SYSROOT)
        set(machine DEB_HOST_ARCH=armhf)
        list(APPEND options "-l${CPACK_DORVEL_SYSROOT}/usr/lib/arm-linux-gnueabihf")
        file(GLOB packages "${CPACK_DORVEL_SYSROOT}/packages/*")
        foreach(package IN LISTS packages)
            list(APPEND options "-S${package}")
        endforeach()
    endif()
    execute_process(COMMAND "${CMAKE_COMMAND}" -E env LC_ALL=C ${machine} dpkg-shlibdeps ${options} ${NEED_FILES}
                    WORKING_DIRECTORY "${folder}" OUTPUT_VARIABLE depends ERROR_VARIABLE remarks RESULT_VARIABLE failed
                    OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(failed OR NOT depends MATCHES "^shlibs:Depends=(.+)$")
        message(FATAL_ERROR "dpkg-shlibdeps found no dependencies of ${NEED_FILES}:\n${remarks}${depends}")
    endif()
    set(${variable} "${CMAKE_MATCH_1}" PARENT_SCOPE)
endfunction()

set(version "${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")

package_depends(CPACK_DEBIAN_DRIVER_PACKAGE_DEPENDS FILES "${CPACK_DORVEL_BIN}/dorvel_bacnet.so" EXCLUDE liblua5.4-0)
set(CPACK_DEBIAN_DRIVER-SYMBOLS_PACKAGE_DEPENDS "dorvel-bacnet-driver (= ${version})")

if("tools" IN_LIST CPACK_COMPONENTS_ALL)
    set(files dorvel-workbench bacnet-simulator)
    foreach(library IN LISTS CPACK_DORVEL_HOST)
        list(APPEND files ${library}.so)
    endforeach()
    list(TRANSFORM files PREPEND "${CPACK_DORVEL_BIN}/")
    package_depends(depends FILES ${files})
    set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "dorvel-bacnet-driver (= ${version}), ${depends}")
    set(CPACK_DEBIAN_TOOLS-SYMBOLS_PACKAGE_DEPENDS "dorvel-bacnet-tools (= ${version})")
endif()
