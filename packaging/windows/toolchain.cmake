# Builds for Windows on Linux, with MinGW-w64 and the threads of POSIX, and runs what was built with Wine. Programs need
# no library that the system does not have. build.sh puts the libraries of others into KESTRANE_LIBRARIES.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(triple x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${triple}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triple}-g++-posix)
set(CMAKE_RC_COMPILER ${triple}-windres)
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/wine.sh)

set(KESTRANE_LIBRARIES $ENV{KESTRANE_LIBRARIES} CACHE PATH "Where the libraries of others are installed")
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES KESTRANE_LIBRARIES)
set(CMAKE_FIND_ROOT_PATH ${KESTRANE_LIBRARIES} /usr/${triple})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_LIBDIR} ${KESTRANE_LIBRARIES}/lib/pkgconfig)

# The oldest Windows is 10. Files are written as they are, without a carriage return before each line's end, and the
# printf of the standard in place of the system's.
add_compile_definitions(_WIN32_WINNT=0x0A00 WIN32_LEAN_AND_MEAN NOMINMAX __USE_MINGW_ANSI_STDIO=1)
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static /usr/${triple}/lib/binmode.o")
