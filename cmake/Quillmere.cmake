# What every target of the project has in common.

find_program(CCACHE ccache)
if(CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
    if(QUILLMERE_PRECOMPILE)
        set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_SOURCE_DIR}/cmake/ccache)
    endif()
endif()

add_library(quillmere_options INTERFACE)
target_compile_options(quillmere_options INTERFACE
    -Wall -Wextra -Wpedantic $<IF:$<CXX_COMPILER_ID:GNU>,-Wshadow=local,-Wshadow> -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-qual -Wformat=2
    -Wno-missing-field-initializers -Werror
    # GCC 12 warns of overlapping copies in its own std::string where there are none.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
if(QUILLMERE_SANITIZE)
    target_compile_options(quillmere_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(quillmere_options INTERFACE -fsanitize=address,undefined)
endif()

# quillmere_precompile(TARGET OWNER [HEADERS...]): what most sources of a program include is compiled once, by the target OWNER, for all that
# are compiled with the same flags. A source still includes what it uses: the presets "release" and "check" build without this.
function(quillmere_precompile target owner)
    if(NOT QUILLMERE_PRECOMPILE)
        return()
    endif()
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # GCC takes it only where the same words are defined, and with it warns of overlong copies in its own std::string.
        target_link_libraries(${target} PRIVATE fmt::fmt)
        target_compile_options(${target} PRIVATE -UQT_TESTCASE_BUILDDIR -UQT_TESTCASE_SOURCEDIR -Wno-stringop-overflow -Wno-array-bounds)
    endif()
    if(target STREQUAL owner)
        target_precompile_headers(${target} PRIVATE ${QUILLMERE_COMMON_HEADERS} ${ARGN})
        target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:Clang>:SHELL:-Xclang -fno-pch-timestamp>)
    else()
        target_precompile_headers(${target} REUSE_FROM ${owner})
    endif()
endfunction()
set(QUILLMERE_COMMON_HEADERS <algorithm> <array> <chrono> <deque> <filesystem> <fmt/format.h> <fstream> <functional> <map> <memory> <optional>
    <set> <span> <stdexcept> <string> <string_view> <tuple> <unordered_map> <utility> <variant> <vector>)

# quillmere_library(NAME LINKS other folders and packages...): the sources of the calling folder as one target.
# The link list is what keeps the arrows of the architecture pointing one way.
function(quillmere_library name)
    cmake_parse_arguments(ARG "" "" "LINKS;PRIVATE_LINKS;PRECOMPILED" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h *.S)
    if(NOT sources MATCHES "\\.(cpp|S)(;|$)")
        # Headers alone, or nothing yet: there is no archive to make.
        add_library(${name} INTERFACE)
        target_include_directories(${name} INTERFACE ${CMAKE_SOURCE_DIR}/src)
        target_link_libraries(${name} INTERFACE ${ARG_LINKS} ${ARG_PRIVATE_LINKS})
        return()
    endif()
    add_library(${name} STATIC ${sources})
    set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX)
    target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
    target_link_libraries(${name} PUBLIC ${ARG_LINKS} PRIVATE quillmere_options ${ARG_PRIVATE_LINKS})
    if(ARG_PRECOMPILED)
        quillmere_precompile(${name} ${name} ${ARG_PRECOMPILED})
    else()
        quillmere_precompile(${name} edition)
    endif()
endfunction()

# edition_constant(VARIABLE NAME): the text of a constant of edition/Edition.h.
function(edition_constant variable name)
    set(header ${CMAKE_SOURCE_DIR}/src/edition/Edition.h)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${header})
    file(STRINGS ${header} line REGEX "string_view ${name} = ")
    if(NOT line MATCHES "= \"([^\"]*)\"")
        message(FATAL_ERROR "edition/Edition.h has no text ${name}")
    endif()
    set(${variable} "${CMAKE_MATCH_1}" PARENT_SCOPE)
endfunction()

# quillmere_tests(TARGET SHARDS n [ENVIRONMENT ...]): the tests of a program in n processes, each with every n-th test. One process for
# each test would spend more on starting than on testing.
function(quillmere_tests target)
    cmake_parse_arguments(ARG "" "SHARDS" "ENVIRONMENT" ${ARGN})
    math(EXPR last "${ARG_SHARDS} - 1")
    foreach(shard RANGE ${last})
        add_test(NAME ${target}/${shard} COMMAND ${target} --gtest_brief=1)
        set_tests_properties(${target}/${shard} PROPERTIES TIMEOUT 600
            ENVIRONMENT "GTEST_TOTAL_SHARDS=${ARG_SHARDS};GTEST_SHARD_INDEX=${shard};${ARG_ENVIRONMENT}")
    endforeach()
endfunction()

# quillmere_late_library(SOURCE FILE): the source loads the library when it is first wanted, by its name with the number, which it is told
# as QUILLMERE_LIBRARY. The package asks for all of them.
function(quillmere_late_library source file)
    file(REAL_PATH ${file} real)
    if(NOT real MATCHES "lib[a-z]+\\.so\\.[0-9]+")
        message(FATAL_ERROR "${real} is not the name of a library with its number")
    endif()
    set_source_files_properties(${source} PROPERTIES COMPILE_DEFINITIONS "QUILLMERE_LIBRARY=\"${CMAKE_MATCH_0}\"")
    set_property(GLOBAL APPEND PROPERTY quillmere_late_libraries ${real})
endfunction()
