# Installs BUILD into PREFIX, which is emptied first. The tree is moved after it was installed, so
# that nothing in it works that remembers where it was put.
file(REMOVE_RECURSE "${PREFIX}" "${PREFIX}.first")
execute_process(
    COMMAND "${CMAKE_COMMAND}" --install "${BUILD}" --prefix "${PREFIX}.first"
    OUTPUT_QUIET
    COMMAND_ERROR_IS_FATAL ANY)
file(RENAME "${PREFIX}.first" "${PREFIX}")
