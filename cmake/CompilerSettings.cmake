# The settings that every target of this project is compiled with.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

# Programs, libraries and the add-in stand side by side and find one another there.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
set(CMAKE_INSTALL_RPATH "$ORIGIN")

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release)
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Werror)

# In optimised builds GCC's flow analysis takes sound uses of std::optional and std::vector for faults, and
# which ones differs from version to version. The other presets keep these warnings.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    foreach(warning array-bounds maybe-uninitialized stringop-overflow stringop-overread restrict)
        add_compile_options($<$<CONFIG:Release>:-Wno-${warning}>)
    endforeach()
endif()

if(DORVEL_SANITIZE)
    add_compile_options(-fsanitize=${DORVEL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer -O1)
    add_link_options(-fsanitize=${DORVEL_SANITIZE})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang" AND DORVEL_SANITIZE STREQUAL "thread")
        # The sanitizer's own operator new would stand in front of one that a test's program brings.
        # It comes with the C++ libraries alone, so those are named.
        add_link_options(--driver-mode=gcc)
        set(CMAKE_CXX_STANDARD_LIBRARIES "-lstdc++ -lm")
    endif()
endif()

if(DORVEL_BUILD_FUZZERS)
    # More executions find more here than the operands of comparisons, which cost a third of the time.
    add_compile_options(-O2 -fno-sanitize-coverage=trace-cmp)
endif()
