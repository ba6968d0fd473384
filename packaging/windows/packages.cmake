# The installer by CPack: `cpack --config CPackConfig.cmake` in the folder of the build. It has what the install rules
# say; its script is NSIS.template.in, since that of CMake asks for an administrator.
set(CPACK_GENERATOR NSIS)
set(CPACK_MONOLITHIC_INSTALL ON)
set(CPACK_PACKAGE_VENDOR "${KESTRANE_COMPANY}")
set(CPACK_PACKAGE_FILE_NAME kestrane-${PROJECT_VERSION}-setup)
set(CPACK_PACKAGE_ICON ${CMAKE_BINARY_DIR}/src/cli/kestrane-cli.ico)
set(CPACK_STRIP_FILES ON)
list(APPEND CMAKE_MODULE_PATH ${CMAKE_SOURCE_DIR}/packaging/windows)
include(CPack)
