# The headers that most sources read, read once. A source still includes all that it uses: a build
# without this, as the clang preset is, fails where one does not.

option(KESTOBOARD_PRECOMPILE "Read the most used headers once for all sources" OFF)

set(KESTOBOARD_PRECOMPILED_HEADERS
    <QApplication>
    <QButtonGroup>
    <QComboBox>
    <QDir>
    <QFile>
    <QFileInfo>
    <QGridLayout>
    <QLabel>
    <QLineEdit>
    <QLocale>
    <QMenu>
    <QPointer>
    <QProcess>
    <QPushButton>
    <QSettings>
    <QStringList>
    <QThread>
    <QTimer>
    <QToolButton>
    <QVBoxLayout>
    <algorithm>
    <functional>
    <list>
    <map>
    <memory>
    <set>
    <string>
    <vector>)

# kestoboard_precompile(TARGET strict|plain): TARGET reads the precompiled headers; strict where
# kestoboard_common was said of it, plain for a test under kestoboard_language. It has to use
# Qt5::Widgets, and Qt5::Test where it is a test.
function(kestoboard_precompile target kind)
    if(KESTOBOARD_PRECOMPILE)
        target_precompile_headers(${target} REUSE_FROM kestoboard_precompiled_${kind})
    endif()
endfunction()

# kestoboard_precompiled(KIND LIBRARY [HEADER...])
#
# What holds the precompiled headers of a kind. A macro that is defined or asked for in there has to
# be defined in the same way by all users.
function(kestoboard_precompiled kind library)
    set(target kestoboard_precompiled_${kind})
    set(source ${CMAKE_CURRENT_BINARY_DIR}/${target}.cpp)
    file(CONFIGURE OUTPUT ${source} CONTENT "")
    add_library(${target} OBJECT ${source})
    set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE ON)
    target_link_libraries(${target} PRIVATE Qt5::Widgets ${library})
    target_precompile_headers(${target} PRIVATE ${KESTOBOARD_PRECOMPILED_HEADERS} ${ARGN})
endfunction()

if(KESTOBOARD_PRECOMPILE)
    kestoboard_precompiled(strict Qt5::Widgets)
    kestoboard_common(kestoboard_precompiled_strict)
    if(BUILD_TESTING)
        # Without the place of the build, which is defined for a search that no test makes, copies of
        # the tree in different places share what is compiled.
        set_property(TARGET Qt5::Test PROPERTY INTERFACE_COMPILE_DEFINITIONS QT_TESTLIB_LIB)
        kestoboard_precompiled(plain Qt5::Test <QtTest>)
        kestoboard_language(kestoboard_precompiled_plain)
    endif()
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_LAUNCHER MATCHES "ccache$")
        # ccache has to see what the precompiled headers hide, and be told that it may go on.
        add_compile_options(-fpch-preprocess)
        list(PREPEND CMAKE_CXX_COMPILER_LAUNCHER
            ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros)
    endif()
endif()
