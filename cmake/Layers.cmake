# The layers of the tree. A layer is one folder or a few with separate include folders. It finds only the headers of
# the layers that it links, so an include of a higher layer does not build.

# add_layer(NAME [STATIC] FOLDERS ... [SUBFOLDERS ...] [USES ...]): the sources below the folders as objects, or as a
# static library. Headers of FOLDERS are included by their file names, those of SUBFOLDERS with the folder's name in
# front. USES are the layers and libraries that it may include.
function(add_layer name)
    cmake_parse_arguments(LAYER "STATIC" "" "FOLDERS;SUBFOLDERS;USES" ${ARGN})
    set(sources)
    foreach(folder IN LISTS LAYER_FOLDERS LAYER_SUBFOLDERS)
        file(GLOB folder_sources CONFIGURE_DEPENDS "${folder}/*.cpp")
        list(FILTER folder_sources EXCLUDE REGEX "/main\\.cpp$")
        list(APPEND sources ${folder_sources})
    endforeach()
    set(kind OBJECT)
    if(LAYER_STATIC)
        set(kind STATIC)
    endif()
    add_library(${name} ${kind} ${sources})
    target_link_libraries(${name} PUBLIC ${LAYER_USES})
    foreach(folder IN LISTS LAYER_FOLDERS)
        target_include_directories(${name} PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}/${folder}")
    endforeach()
endfunction()

# The driver's layers, lowest first, each with those below it: what a test, a fuzz target or a benchmark of that layer
# links.
set(TRANSPORT bacnet_transport)
set(TAG ${TRANSPORT} bacnet_tag)
set(VALUES ${TAG} bacnet_values)
set(SERVICE ${VALUES} bacnet_service)
set(PDU ${SERVICE} bacnet_pdu)
set(DEVICE ${PDU} bacnet_device)
set(ADDIN ${DEVICE} bacnet_addin)

# The host on a PC.
set(HOST dorvel dorvelshare opcua)
