# Options, and the compile flags that every target of ours takes through `project_options`.
option(BUILD_TESTING "Build the tests" ON)
option(BUILD_CONTROLLER "Build the controller (needs GStreamer, yaml-cpp)" ON)
option(BUILD_BENCHMARKS "Build the benchmarks (needs Google Benchmark)" OFF)
option(BUILD_FUZZERS "Build the fuzz targets (needs clang)" OFF)
option(WARNINGS_AS_ERRORS "Treat compiler warnings as errors, as the presets for developers do" OFF)
set(SANITIZERS "" CACHE STRING "Sanitizers to build with, as in -fsanitize=…")

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)

find_program(CCACHE ccache)
if(CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

# For what waits for people or for the network, or is done once, at the start: what -O2 adds there is time to build, and
# nothing that anybody would notice.
set(UNHURRIED $<$<CONFIG:Release>:-O1>)

add_library(project_options INTERFACE)
target_include_directories(project_options INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(project_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor -Woverloaded-virtual
    -Wcast-align -Wunused -Wnull-dereference -Wdouble-promotion -Wformat=2 -fno-omit-frame-pointer)
if(WARNINGS_AS_ERRORS)
    target_compile_options(project_options INTERFACE -Werror)
endif()
if(CMAKE_UNITY_BUILD AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Takes a fixture in the unnamed namespace for one of a header, for it does not stand in the file that is compiled.
    target_compile_options(project_options INTERFACE -Wno-subobject-linkage)
endif()
if(SANITIZERS)
    target_compile_options(project_options INTERFACE -fsanitize=${SANITIZERS} -fno-sanitize-recover=all)
    target_link_options(project_options INTERFACE -fsanitize=${SANITIZERS})
endif()
if(SANITIZERS STREQUAL "thread" AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Asio's fences, which the sanitizer does not follow, stand beside locks that it does.
    target_compile_options(project_options INTERFACE -Wno-tsan)
endif()
if(BUILD_FUZZERS)
    target_compile_options(project_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
