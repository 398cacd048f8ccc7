# SPDX-License-Identifier: MIT
# What every target of the project is compiled with, and the switches that the presets turn.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
# Every library comes from the system's own folders. CMake would pad the path with empty entries, to be replaced at an
# install, and the loader takes an empty entry for the current directory, which may be anybody's.
set(CMAKE_SKIP_RPATH ON)
# Backtraces name lines; variables in a debugger cost half of the build and are what the preset "debug" is for.
set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "-O2 -g1 -DNDEBUG")

set(VESLORA_SANITIZE "" CACHE STRING "Sanitizers to build with, as -fsanitize= takes them")
option(VESLORA_WARNINGS_FAIL "Take a warning for an error; not where another compiler or Qt may know new ones" ON)
option(VESLORA_COVERAGE "Count which lines the tests reach" OFF)
option(VESLORA_FUZZ "Build the fuzzers instead of the program" OFF)

find_program(CCACHE ccache)
if(CCACHE)
    # Precompiled headers only hit the cache when it may look past their time stamps.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_SLOPPINESS=pch_defines,time_macros
        CCACHE_NOHASHDIR=true ${CCACHE})
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion -Wnon-virtual-dtor
                    -Woverloaded-virtual $<$<BOOL:${VESLORA_WARNINGS_FAIL}>:-Werror>
                    # A record named field by field takes the defaults of the fields that are left out, by intent.
                    -Wno-missing-field-initializers)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # g++ 12 sees overlaps and dangling pointers inside the standard library's strings that are not there.
    add_compile_options(-Wno-restrict -Wno-dangling-pointer -fpch-preprocess)
endif()

# An index out of bounds ends the program instead of reading what lies there.
add_compile_definitions(_GLIBCXX_ASSERTIONS)
if(CMAKE_BUILD_TYPE STREQUAL "RelWithDebInfo" AND NOT VESLORA_SANITIZE)
    # The rest of the usual hardening; tests/hardening looks for each in what these make.
    add_compile_options(-fstack-protector-strong -fstack-clash-protection -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3)
    if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64|i.86)$")
        add_compile_options(-fcf-protection=full)
    elseif(CMAKE_SYSTEM_PROCESSOR MATCHES "^(aarch64|arm64)$")
        add_compile_options(-mbranch-protection=standard)
    endif()
endif()
if(CMAKE_BUILD_TYPE STREQUAL "RelWithDebInfo" AND NOT VESLORA_SANITIZE)
    # OPTIMIZATION: 350 KB of tables, which the loader reads whole at each start, become 15.
    add_link_options(-Wl,-z,pack-relative-relocs)
endif()
if(NOT VESLORA_SANITIZE)
    # What the loader has put into place is then read-only, and no stack can be run.
    add_link_options(-Wl,-z,relro,-z,now,-z,noexecstack)
endif()

if(VESLORA_SANITIZE)
    add_compile_options(-fsanitize=${VESLORA_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${VESLORA_SANITIZE})
    if(VESLORA_SANITIZE MATCHES thread AND CMAKE_CXX_COMPILER_ID STREQUAL GNU)
        # Qt's headers hold fences, which the compiler warns of under this sanitizer.
        add_compile_options(-Wno-tsan)
    endif()
endif()
if(VESLORA_COVERAGE)
    add_compile_options(--coverage -O0)
    add_link_options(--coverage)
endif()

# A room is one static library of every source in its folder: a new file needs no edit of the build.
function(veslora_room name)
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
    add_library(${name} STATIC ${sources})
    target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR})
endfunction()

# OPTIMIZATION: nearly all of the code is mapped soon after the start, and counts as memory in use. A room that waits for
# people and for other programs is made for size: with VesloraUI and VesloraLinux 3.66 MB of code become 2.30. The core,
# which reads what agents write, stays made for speed.
function(veslora_made_for_size name)
    if(CMAKE_BUILD_TYPE STREQUAL "RelWithDebInfo" AND NOT VESLORA_SANITIZE)
        target_compile_options(${name} PRIVATE -Os)
    endif()
endfunction()
