# What every target of the tree has in common, and the two shapes that targets come in.

include(CheckLinkerFlag)

option(KESTOBOARD_WERROR "Treat compiler warnings as errors" OFF)
set(KESTOBOARD_SANITIZE "" CACHE STRING
    "Sanitizers to build with, as the compiler names them: address,undefined or thread")

# kestoboard_language(TARGET): language level, warnings and sanitizers.
function(kestoboard_language target)
    target_compile_features(${target} PUBLIC cxx_std_17)
    set_target_properties(${target} PROPERTIES
        CXX_EXTENSIONS OFF
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Werror=switch)
    if(KESTOBOARD_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    if(KESTOBOARD_SANITIZE)
        target_compile_options(${target} PRIVATE
            -fsanitize=${KESTOBOARD_SANITIZE} -fno-omit-frame-pointer)
        target_link_options(${target} PRIVATE -fsanitize=${KESTOBOARD_SANITIZE})
        if(KESTOBOARD_SANITIZE MATCHES "undefined")
            target_compile_options(${target} PRIVATE -fno-sanitize-recover=undefined)
        endif()
    endif()
endfunction()

# kestoboard_common(TARGET): the same with strict Qt, for all that is shipped.
function(kestoboard_common target)
    kestoboard_language(${target})
    target_compile_definitions(${target} PRIVATE
        QT_NO_CAST_FROM_ASCII
        QT_NO_CAST_TO_ASCII
        QT_NO_FOREACH
        QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
        QT_NO_URL_CAST_FROM_STRING
        QT_DEPRECATED_WARNINGS_SINCE=0x050000)
endfunction()

# kestoboard_library(NAME VERSION x.y FOLDER folder SOURCES ... HEADERS ... DEPENDS ...)
#
# A shared library lib<NAME>-<VERSION>.so from src/lib/<folder>, with the alias Board::<NAME>. Its
# headers are included as <folder/Header.h> in the tree and installed under the same spelling.
# DEPENDS names the libraries that its headers need.
function(kestoboard_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "VERSION;FOLDER" "SOURCES;HEADERS;DEPENDS")
    string(TOUPPER ${name} upper)

    add_library(${name} SHARED ${arg_SOURCES} ${arg_HEADERS})
    add_library(Board::${name} ALIAS ${name})
    kestoboard_common(${name})
    kestoboard_precompile(${name} strict)
    set_target_properties(${name} PROPERTIES
        AUTOMOC ON
        AUTORCC ON
        OUTPUT_NAME "${name}-${arg_VERSION}"
        INSTALL_RPATH "$ORIGIN")
    target_compile_definitions(${name} PRIVATE ${upper}_LIBRARY)
    target_include_directories(${name} PUBLIC
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src/lib>
        $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/kestoboard>)
    target_link_libraries(${name} PUBLIC ${arg_DEPENDS})

    install(TARGETS ${name} EXPORT BoardTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
    install(FILES ${arg_HEADERS}
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/kestoboard/${arg_FOLDER})
endfunction()

# The programs of the tests are many and each is linked after each change, so the fastest linker counts.
check_linker_flag(CXX -fuse-ld=gold KESTOBOARD_HAS_GOLD)

# kestoboard_test(NAME [LONG] SOURCES ... [LIBRARIES ...] [LABELS ...])
#
# A Qt Test program of that name, run by CTest without a display. Tests may write texts plainly: a
# literal is UTF-8. Each source ends with the inclusion of its own <stem>.moc. LONG says that the
# program has a thorough form as well, which `./test --long` runs.
function(kestoboard_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "LONG" "" "SOURCES;LIBRARIES;LABELS")
    set(timeout 600)
    set(environment ${KESTOBOARD_TEST_ENVIRONMENT})
    if(arg_LONG)
        list(APPEND arg_LABELS long)
        set(timeout 7200)
        # Qt Test would end a function after five minutes.
        list(APPEND environment "QTEST_FUNCTION_TIMEOUT=${timeout}000")
    endif()
    add_executable(${name} ${arg_SOURCES})
    kestoboard_language(${name})
    kestoboard_precompile(${name} plain)
    set_target_properties(${name} PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/tests")
    target_link_libraries(${name} PRIVATE Qt5::Test Qt5::Widgets ${arg_LIBRARIES})
    if(KESTOBOARD_HAS_GOLD)
        target_link_options(${name} PRIVATE -fuse-ld=gold)
    endif()
    # One run of moc a source: looking for what needs it costs more than the run.
    target_include_directories(${name} PRIVATE ${CMAKE_CURRENT_BINARY_DIR})
    foreach(source IN LISTS arg_SOURCES)
        get_filename_component(stem ${source} NAME_WE)
        set(moc ${CMAKE_CURRENT_BINARY_DIR}/${stem}.moc)
        qt5_generate_moc(${source} ${moc})
        set_property(SOURCE ${source} APPEND PROPERTY OBJECT_DEPENDS ${moc})
    endforeach()
    add_test(NAME ${name} COMMAND ${name})
    # The time limit only ends a hanging run; it is far above what the slowest test needs.
    set_tests_properties(${name} PROPERTIES
        TIMEOUT ${timeout}
        ENVIRONMENT "${environment}"
        LABELS "${arg_LABELS}")
endfunction()
