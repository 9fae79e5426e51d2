# Builds for arm64 with Debian's cross compiler, against arm64 packages beside the machine's own.
# tests/arm64/check makes a Debian that has all of them.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)

# The build runs one program that it has built, and ctest runs the tests.
find_program(HALCYRA_ARM64_EMULATOR NAMES qemu-aarch64-static qemu-aarch64)
if(HALCYRA_ARM64_EMULATOR)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${HALCYRA_ARM64_EMULATOR})
endif()

# Otherwise pkg-config finds the machine's own libraries.
set(ENV{PKG_CONFIG_LIBDIR} /usr/lib/aarch64-linux-gnu/pkgconfig:/usr/share/pkgconfig)

# Otherwise the package is named after the machine that makes it.
set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE arm64)
