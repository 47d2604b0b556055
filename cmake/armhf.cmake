# The target: 32-bit ARM, ARMv7 hard float, with Debian's cross compiler; programs run under qemu-arm.

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR armv7l)
set(CMAKE_C_COMPILER arm-linux-gnueabihf-gcc)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)
# GCC notes on every use of a 64-bit aligned argument that its release 7 changed the calling convention.
set(CMAKE_CXX_FLAGS_INIT "-march=armv7-a+fp -Wno-psabi")
set(CMAKE_C_FLAGS_INIT "-march=armv7-a+fp")

# Besides the compiler's own libraries there is one root: scripts/sysroot-armhf makes it, or DORVEL_SDK names it.
set(DORVEL_SYSROOT "${CMAKE_BINARY_DIR}/sysroot" CACHE PATH "Lua and header-only libraries for ARM")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES DORVEL_SYSROOT DORVEL_SDK)
set(CMAKE_FIND_ROOT_PATH "${DORVEL_SYSROOT}")
if(DORVEL_SDK)
    list(PREPEND CMAKE_FIND_ROOT_PATH "${DORVEL_SDK}")
endif()
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_LIBDIR} "${DORVEL_SYSROOT}/usr/lib/arm-linux-gnueabihf/pkgconfig")
set(ENV{PKG_CONFIG_SYSROOT_DIR} "${DORVEL_SYSROOT}")

# The library path selects the compiler's C library even if the machine has another one for ARM.
set(cross_root /usr/arm-linux-gnueabihf)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm -L ${cross_root} -E LD_LIBRARY_PATH=${cross_root}/lib)
