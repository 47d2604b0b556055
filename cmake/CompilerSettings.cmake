# Compiler and linker settings of every target of this project.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

# Programs, libraries and the add-in are in one folder, where they find one another.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
set(CMAKE_INSTALL_RPATH "$ORIGIN")

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release)
endif()

# Files are named by their path in the source tree, so that two builds in two folders give the same octets. A compiler
# cache names them relative to the build folder. The last option that fits is used.
file(RELATIVE_PATH way_to_sources "${PROJECT_BINARY_DIR}" "${PROJECT_SOURCE_DIR}")
set(NEUTRAL_PATHS "-ffile-prefix-map=${PROJECT_SOURCE_DIR}/=" "-ffile-prefix-map=${way_to_sources}="
                  "-ffile-prefix-map=${PROJECT_BINARY_DIR}=build")
# Debug symbols name functions, files and lines, all that a trace of a crash needs; those of variables would make a build
# a third longer.
add_compile_options("$<$<CONFIG:Release>:-g1;${NEUTRAL_PATHS}>")

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Werror)

# In optimised builds GCC's flow analysis warns of correct uses of std::optional and std::vector, and of
# different ones in each version. The other presets keep these warnings.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    foreach(warning array-bounds maybe-uninitialized stringop-overflow stringop-overread restrict)
        add_compile_options($<$<CONFIG:Release>:-Wno-${warning}>)
    endforeach()
endif()

# GCC optimises a released add-in as a whole, which makes it smaller by a tenth and faster by a twentieth. The objects of
# the driver have machine code as well: the tests link that, in a twentieth of the time.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_BUILD_TYPE STREQUAL "Release")
    # The assembler names the build folder in the line numbers of that machine code, unless it has the map as well.
    set(WHOLE_COMPILE -flto -ffat-lto-objects "-Wa,--debug-prefix-map=${PROJECT_BINARY_DIR}=build")
    set(WHOLE_LINK -flto -flto-partition=one ${NEUTRAL_PATHS})
    set(MACHINE_CODE_LINK -fno-lto)
endif()

if(DORVEL_SANITIZE)
    add_compile_options(-fsanitize=${DORVEL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer -O1)
    add_link_options(-fsanitize=${DORVEL_SANITIZE})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang" AND DORVEL_SANITIZE MATCHES "undefined")
        add_compile_options("-fsanitize-ignorelist=${PROJECT_SOURCE_DIR}/cmake/sanitizer-ignore.txt")
    endif()
    if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang" AND DORVEL_SANITIZE STREQUAL "thread")
        # The sanitizer's operator new would take precedence over that of a test program. Clang links it only
        # when it links as for C++, so it links as for C and the C++ libraries are named.
        add_link_options(--driver-mode=gcc)
        set(CMAKE_CXX_STANDARD_LIBRARIES "-lstdc++ -lm")
    endif()
endif()

if(DORVEL_BUILD_FUZZERS)
    # Tracing the operands of comparisons costs a third of the time; more executions find more here.
    add_compile_options(-O2 -fno-sanitize-coverage=trace-cmp)
endif()

# For a compiler cache GCC has to name a precompiled header in the preprocessed source, and Clang has to leave the time
# out of it.
set(PRECOMPILED_HEADER_OPTIONS "$<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>"
                               "$<$<CXX_COMPILER_ID:Clang>:SHELL:-Xclang -fno-pch-timestamp>")
