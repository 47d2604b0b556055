# Run by CPack when the files of all packages are in CPACK_TEMPORARY_DIRECTORY, a folder for each: adds what Debian's
# packages have beside the files of an installation.

cmake_policy(VERSION 3.22)

# $SOURCE_DATE_EPOCH is the time.
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
set(version "${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    set(share "${CPACK_TEMPORARY_DIRECTORY}/${component}/usr/share")
    if(component MATCHES "^(.*)-symbols$")
        set(package "dorvel-bacnet-${CMAKE_MATCH_1}")
        file(MAKE_DIRECTORY "${share}/doc")
        file(CREATE_LINK "${package}" "${share}/doc/${package}-dbgsym" SYMBOLIC)
        continue()
    endif()
    set(documents "${share}/doc/dorvel-bacnet-${component}")
    file(WRITE "${documents}/changelog.Debian" "dorvel-bacnet (${version}) unstable; urgency=medium

  * Version ${CPACK_PACKAGE_VERSION}.

 -- ${CPACK_PACKAGE_CONTACT}  ${date}
")
    file(GLOB_RECURSE pages "${share}/man/*")
    execute_process(COMMAND gzip -9n "${documents}/changelog.Debian" ${pages} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
