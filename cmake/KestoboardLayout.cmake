# The build tree has the shape of the installed tree, so that the application finds its helpers by
# the same relative path in both.

set(KESTOBOARD_LIBEXECDIR "${CMAKE_INSTALL_LIBEXECDIR}/kestoboard")
set(KESTOBOARD_DATADIR "${CMAKE_INSTALL_DATADIR}/kestoboard")

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
set(KESTOBOARD_LIBEXEC_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/libexec/kestoboard")
set(KESTOBOARD_DATA_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/share/kestoboard")

# Installed programs find the installed libraries wherever the prefix is moved to.
file(RELATIVE_PATH KESTOBOARD_BIN_TO_LIB
    "/${CMAKE_INSTALL_BINDIR}" "/${CMAKE_INSTALL_LIBDIR}")
