# What every target of the tree shares: warnings, sanitizers, compiler cache and the two ways of declaring a library.

find_program(SIXTRACE_CCACHE ccache)
if(SIXTRACE_CCACHE)
    # Precompiled headers carry defines and time stamps that the cache would otherwise refuse.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
        ${SIXTRACE_CCACHE})
endif()

add_library(sixtrace_warnings INTERFACE)
target_compile_options(sixtrace_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast -Wnon-virtual-dtor
    -Woverloaded-virtual -Wcast-align -Wundef -Werror)

add_library(sixtrace_sanitizers INTERFACE)
if(SIXTRACE_SANITIZE)
    target_compile_options(sixtrace_sanitizers INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    # Indices of the standard library's containers, which stay inside their memory where they are wrong by a little.
    target_compile_definitions(sixtrace_sanitizers INTERFACE _GLIBCXX_ASSERTIONS)
    target_link_options(sixtrace_sanitizers INTERFACE -fsanitize=address,undefined)
endif()
if(SIXTRACE_FUZZ)
    # The libraries tell the fuzzer which of their branches an input reaches.
    target_compile_options(sixtrace_sanitizers INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(SIXTRACE_COVERAGE)
    target_compile_options(sixtrace_sanitizers INTERFACE --coverage)
    target_link_options(sixtrace_sanitizers INTERFACE --coverage)
endif()

add_library(sixtrace_build INTERFACE)
target_link_libraries(sixtrace_build INTERFACE sixtrace_warnings sixtrace_sanitizers)
target_include_directories(sixtrace_build INTERFACE "${CMAKE_SOURCE_DIR}/src")
target_compile_definitions(sixtrace_build INTERFACE
    QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_USE_QSTRINGBUILDER)

# sixtrace_precompiled(NAME [PROGRAMS] LINKS ...): the headers of cmake/pch_NAME.h, compiled once for every target that
# reuses them by sixtrace_use_precompiled. Programs and libraries are compiled for other positions, so that a program
# cannot use what was precompiled for a library: PROGRAMS says that NAME is for programs.
function(sixtrace_precompiled NAME)
    cmake_parse_arguments(ARG "PROGRAMS" "" "LINKS" ${ARGN})
    if(NOT SIXTRACE_PCH)
        return()
    endif()
    add_library(sixtrace_pch_${NAME} OBJECT "${CMAKE_SOURCE_DIR}/cmake/pch.cpp")
    target_link_libraries(sixtrace_pch_${NAME} PRIVATE ${ARG_LINKS} sixtrace_build)
    set_target_properties(sixtrace_pch_${NAME} PROPERTIES AUTOMOC OFF AUTORCC OFF)
    if(ARG_PROGRAMS)
        set_target_properties(sixtrace_pch_${NAME} PROPERTIES POSITION_INDEPENDENT_CODE OFF)
        target_compile_options(sixtrace_pch_${NAME} PRIVATE -fPIE)
    endif()
    target_precompile_headers(sixtrace_pch_${NAME} PRIVATE "${CMAKE_SOURCE_DIR}/cmake/pch_${NAME}.h")
endfunction()

function(sixtrace_use_precompiled TARGET NAME)
    if(SIXTRACE_PCH)
        target_precompile_headers(${TARGET} REUSE_FROM sixtrace_pch_${NAME})
    endif()
endfunction()

# sixtrace_tells_version(SOURCE ...): these sources, and only these, are compiled anew for another version.
function(sixtrace_tells_version)
    set_source_files_properties(${ARGN} PROPERTIES COMPILE_DEFINITIONS "SIXTRACE_VERSION=\"${PROJECT_VERSION}\"")
endfunction()

# sixtrace_core(NAME SOURCES ... LINKS ...): the windowless half of a folder. It links QtCore and QtGui (for pictures as
# values) and therefore cannot even find a widget header.
function(sixtrace_core NAME)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_library(sixtrace_${NAME} STATIC ${ARG_SOURCES})
    add_library(sixtrace::${NAME} ALIAS sixtrace_${NAME})
    target_link_libraries(sixtrace_${NAME} PUBLIC Qt6::Core Qt6::Gui ${ARG_LINKS} PRIVATE sixtrace_build)
    target_include_directories(sixtrace_${NAME} PUBLIC "${CMAKE_SOURCE_DIR}/src")
    set_target_properties(sixtrace_${NAME} PROPERTIES AUTOMOC OFF AUTORCC OFF)
    sixtrace_use_precompiled(sixtrace_${NAME} core)
endfunction()

# sixtrace_windows(NAME SOURCES ... LINKS ...): the windows of a folder, as library sixtrace::NAME_windows.
function(sixtrace_windows NAME)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_library(sixtrace_${NAME}_windows STATIC ${ARG_SOURCES})
    add_library(sixtrace::${NAME}_windows ALIAS sixtrace_${NAME}_windows)
    target_link_libraries(sixtrace_${NAME}_windows
        PUBLIC sixtrace::${NAME} Qt6::Widgets ${ARG_LINKS} PRIVATE sixtrace_build)
    sixtrace_use_precompiled(sixtrace_${NAME}_windows windows)
endfunction()

# sixtrace_plugin(NAME SOURCES ... LINKS ...): a shared library that is loaded at run time. It knows neither Qt nor the
# program; only what its header exports can be seen.
function(sixtrace_plugin NAME)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_library(${NAME} SHARED ${ARG_SOURCES})
    target_link_libraries(${NAME} PRIVATE ${ARG_LINKS} sixtrace_build)
    set_target_properties(${NAME} PROPERTIES
        CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON AUTOMOC OFF AUTORCC OFF NO_SONAME ON)
endfunction()

# sixtrace_plugin_part(NAME SOURCES ...): what of a plugin tests and fuzzers link too. It is as free of Qt as the plugin.
function(sixtrace_plugin_part NAME)
    cmake_parse_arguments(ARG "" "" "SOURCES" ${ARGN})
    add_library(${NAME} STATIC ${ARG_SOURCES})
    target_link_libraries(${NAME} PRIVATE sixtrace_build)
    target_include_directories(${NAME} PUBLIC "${CMAKE_SOURCE_DIR}/src")
    set_target_properties(${NAME} PROPERTIES
        CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON AUTOMOC OFF AUTORCC OFF)
endfunction()

# sixtrace_program(NAME SOURCES ... LINKS ...): an executable in bin/.
function(sixtrace_program NAME)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_executable(${NAME} ${ARG_SOURCES})
    target_link_libraries(${NAME} PRIVATE ${ARG_LINKS} sixtrace_build)
    set_target_properties(${NAME} PROPERTIES AUTOMOC OFF AUTORCC OFF)
endfunction()
