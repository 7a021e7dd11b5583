# What all targets share: warnings, sanitizers, compiler cache, precompiled headers, and functions that declare libraries
# and programs.

find_program(SIXTRACE_CCACHE ccache)
if(SIXTRACE_CCACHE)
    # Without these settings ccache would not cache files that use precompiled headers, because of their defines and time
    # stamps.
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
    # Checks indices of standard containers: the address sanitizer does not see a wrong index inside allocated memory.
    target_compile_definitions(sixtrace_sanitizers INTERFACE _GLIBCXX_ASSERTIONS)
    target_link_options(sixtrace_sanitizers INTERFACE -fsanitize=address,undefined)
endif()
if(SIXTRACE_FUZZ)
    # The libraries report to the fuzzer which branches an input reaches.
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

# sixtrace_precompiled(NAME [PROGRAMS] LINKS ...): compiles the headers of cmake/pch_NAME.h once, for every target that
# reuses them with sixtrace_use_precompiled. Libraries are compiled with -fPIC and programs with -fPIE, so a program cannot
# use headers that were precompiled for libraries. PROGRAMS says that NAME is for programs.
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

# sixtrace_tells_version(SOURCE ...): defines SIXTRACE_VERSION for these sources only, so that a new version recompiles no
# others.
function(sixtrace_tells_version)
    set_source_files_properties(${ARGN} PROPERTIES COMPILE_DEFINITIONS "SIXTRACE_VERSION=\"${PROJECT_VERSION}\"")
endfunction()

# sixtrace_core(NAME SOURCES ... LINKS ...): the core of a folder, sixtrace::NAME, which has no windows. It links QtCore and
# QtGui (for pictures) but not QtWidgets, so that a core which includes a widget header does not compile.
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

# sixtrace_plugin(NAME SOURCES ... LINKS ...): a shared library that is loaded at run time. It uses neither Qt nor the code
# of the program, and exports only the functions that its header marks.
function(sixtrace_plugin NAME)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_library(${NAME} SHARED ${ARG_SOURCES})
    target_link_libraries(${NAME} PRIVATE ${ARG_LINKS} sixtrace_build)
    set_target_properties(${NAME} PROPERTIES
        CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON AUTOMOC OFF AUTORCC OFF NO_SONAME ON)
endfunction()

# sixtrace_plugin_part(NAME SOURCES ...): the part of a plugin that tests and fuzzers link, too. It does not use Qt.
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
