# SPDX-License-Identifier: MIT
# How the project's targets are made: one set of warnings and hardening flags, and one recipe a kind.

add_library(brenvik-options INTERFACE)
target_include_directories(brenvik-options INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(brenvik-options INTERFACE -Wall -Wextra -Wpedantic)
if(BRENVIK_SANITIZERS)
    target_compile_options(brenvik-options INTERFACE
        -fsanitize=${BRENVIK_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer
        # GCC sees unset members of variants there that no code path reaches, in code that the sanitizers have changed.
        $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
    target_link_options(brenvik-options INTERFACE -fsanitize=${BRENVIK_SANITIZERS})
else()
    # The distribution's hardening (dpkg-buildflags with hardening=+all).
    target_compile_options(brenvik-options INTERFACE
        -fstack-protector-strong -fstack-clash-protection -fcf-protection
        -Wformat -Werror=format-security $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE> $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=2>)
    target_link_options(brenvik-options INTERFACE -Wl,-z,relro -Wl,-z,now)
endif()

# brenvik_library(NAME SOURCES… LIBRARIES…): one folder of the program.
function(brenvik_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_link_libraries(${name} PUBLIC brenvik-options ${ARG_LIBRARIES})
endfunction()

# brenvik_test(NAME SOURCES… LIBRARIES… [LABELS…]): one folder of tests, each test known to ctest by its own name.
# Tests are not optimised: what they call is.
function(brenvik_test name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES;LABELS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE brenvik-options ${ARG_LIBRARIES} GTest::gmock GTest::gtest_main)
    target_compile_options(${name} PRIVATE -O0 -U_FORTIFY_SOURCE)
    target_compile_definitions(${name} PRIVATE BRENVIK_TEST_DATA="${CMAKE_SOURCE_DIR}/tests/data")
    target_precompile_headers(${name} PRIVATE <gtest/gtest.h> <string> <vector> <optional>)
    gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 600 LABELS "${ARG_LABELS}")
endfunction()
