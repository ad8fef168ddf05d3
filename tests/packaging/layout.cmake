# Looks at what stands where below PREFIX, and that none of it leans on BUILD.

foreach(file IN ITEMS
        bin/kestoboard
        ${LIBEXECDIR}/kestoboard/ksbase2_cli
        ${LIBDIR}/libBoard-1.0.so
        ${LIBDIR}/libOrvex-1.0.so
        ${LIBDIR}/libZandu-4.2.so
        ${LIBDIR}/cmake/Board/BoardConfig.cmake
        ${LIBDIR}/cmake/Board/BoardConfigVersion.cmake
        ${LIBDIR}/cmake/Board/BoardTargets.cmake
        ${LIBDIR}/pkgconfig/Board-1.0.pc
        include/kestoboard/Board/MainWindow.h
        include/kestoboard/Board/PowerLeaf.h
        include/kestoboard/application/Application.h
        include/kestoboard/foundation/Console.h
        share/applications/kestoboard.desktop
        share/icons/hicolor/scalable/apps/kestoboard.svg
        share/man/man1/kestoboard.1
        share/metainfo/kestoboard.metainfo.xml
        share/mime/packages/kestoboard.xml)
    if(NOT EXISTS "${PREFIX}/${file}")
        message(SEND_ERROR "${file} is not installed")
    endif()
endforeach()

# The simulated tool must never be taken for the real one.
file(GLOB_RECURSE simulators "${PREFIX}/*ksbase2_cli*")
set(expected "${PREFIX}/${LIBEXECDIR}/kestoboard/ksbase2_cli")
if(NOT simulators STREQUAL expected)
    message(SEND_ERROR "The simulated tool is installed as ${simulators}, not as ${expected} alone")
endif()

file(GLOB binaries "${PREFIX}/bin/*" "${PREFIX}/${LIBDIR}/*.so"
    "${PREFIX}/${LIBEXECDIR}/kestoboard/*")
foreach(binary IN LISTS binaries)
    execute_process(COMMAND readelf -d "${binary}" OUTPUT_VARIABLE dynamic
        COMMAND_ERROR_IS_FATAL ANY)
    string(FIND "${dynamic}" "${BUILD}" found)
    if(NOT found EQUAL -1)
        message(SEND_ERROR "${binary} looks for its libraries in the build tree")
    endif()
endforeach()

execute_process(COMMAND "${PREFIX}/bin/kestoboard" --version
    OUTPUT_VARIABLE version COMMAND_ERROR_IS_FATAL ANY)
string(FIND "${version}" "${VERSION}" found)
if(found EQUAL -1)
    message(SEND_ERROR "kestoboard --version says '${version}', without ${VERSION}")
endif()
