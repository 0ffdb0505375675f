# What every target of this project is built with, and the function that makes a room of the library.

include(GenerateExportHeader)

# Warnings and the strict dialect of Qt: for our own sources only, never handed on to a host.
add_library(zenvor_strict INTERFACE)
target_compile_features(zenvor_strict INTERFACE cxx_std_20)
target_compile_options(zenvor_strict INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast
    -Wcast-qual -Wimplicit-fallthrough -Wextra-semi -Wundef)
target_compile_definitions(zenvor_strict INTERFACE
    QT_NO_KEYWORDS QT_NO_FOREACH QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY
    QT_NO_URL_CAST_FROM_STRING QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_STRICT_ITERATORS
    QT_DISABLE_DEPRECATED_BEFORE=0x060400)

if(ZENVOR_SANITIZE)
    target_compile_options(zenvor_strict INTERFACE
        -fsanitize=${ZENVOR_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(zenvor_strict INTERFACE -fsanitize=${ZENVOR_SANITIZE})
endif()

# zenvor_precompiled(<name> HEADERS <header>… LIBRARIES <target>…): what a tree parses once, if
# ZENVOR_PRECOMPILE_HEADERS says so, for all the targets that name it under zenvor_precompile().
function(zenvor_precompiled name)
    if(ZENVOR_PRECOMPILE_HEADERS STREQUAL "all" OR (ZENVOR_PRECOMPILE_HEADERS STREQUAL "tests" AND name MATCHES "_test$"))
        cmake_parse_arguments(PARSE_ARGV 1 precompiled "" "" "HEADERS;LIBRARIES")
        file(GENERATE OUTPUT ${PROJECT_BINARY_DIR}/${name}.cpp CONTENT "// What ${name} precompiles.\n")
        add_library(${name} OBJECT ${PROJECT_BINARY_DIR}/${name}.cpp)
        zenvor_defaults(${name})
        target_link_libraries(${name} PRIVATE ${precompiled_LIBRARIES})
        target_precompile_headers(${name} PRIVATE ${precompiled_HEADERS})
    endif()
endfunction()

function(zenvor_precompile target name)
    if(TARGET ${name})
        target_precompile_headers(${target} REUSE_FROM ${name})
    endif()
endfunction()

# zenvor_defaults(<target> [MOC]): MOC where a header or source has more to it than C++ says. Without need it would
# cost each target three seconds.
function(zenvor_defaults target)
    if("MOC" IN_LIST ARGN)
        set_target_properties(${target} PROPERTIES AUTOMOC ON)
    endif()
    target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:zenvor_strict>)
    set_target_properties(${target} PROPERTIES
        CXX_EXTENSIONS OFF
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        POSITION_INDEPENDENT_CODE ON)
endfunction()

# zenvor_room(<name> SOURCES … [USES <room>…] [LIBRARIES <target>…])
#
# A folder of src/ as a static target. Its headers are reached as "<name>/header.h" through an include
# directory of its own, so a room can include only from the rooms that it names under USES: an arrow
# upward does not compile.
function(zenvor_room name)
    cmake_parse_arguments(PARSE_ARGV 1 room "" "" "SOURCES;USES;LIBRARIES")
    set(target zenvor_${name})
    set(view ${PROJECT_BINARY_DIR}/rooms/${name})
    file(MAKE_DIRECTORY ${view})
    file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${view}/${name} COPY_ON_ERROR SYMBOLIC)

    add_library(${target} STATIC ${room_SOURCES})
    zenvor_defaults(${target} MOC)
    target_include_directories(${target} PUBLIC ${view})
    list(TRANSFORM room_USES PREPEND zenvor_)
    target_link_libraries(${target} PUBLIC zenvor_api ${room_USES} PRIVATE ${room_LIBRARIES})
    zenvor_precompile(${target} zenvor_precompiled_base)
    set_property(GLOBAL APPEND PROPERTY ZENVOR_ROOMS ${target})
    set_property(GLOBAL APPEND PROPERTY ZENVOR_ROOM_LIBRARIES ${room_LIBRARIES})
endfunction()

zenvor_precompiled(zenvor_precompiled_base
    LIBRARIES Qt6::Core QCoro6::Coro
    HEADERS <algorithm> <chrono> <functional> <memory> <mutex> <optional> <variant> <vector>
        <QCoroTask> <QCoreApplication> <QDateTime> <QFile> <QHash> <QJsonArray> <QJsonDocument> <QJsonObject>
        <QObject> <QString> <QStringList> <QTimer> <QUrl>)
