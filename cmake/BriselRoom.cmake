# How every target of this project is compiled, and what a room is.

find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()
find_program(MOLD mold)
if(MOLD)
  add_link_options(-fuse-ld=mold)
endif()
if(BRISEL_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
if(BRISEL_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all -g1)
  add_link_options(-fsanitize=address,undefined)
endif()

add_library(brisel_warnings INTERFACE)
# Not in the list of what must hold, since g++ 12 raises them falsely: maybe-uninitialized on
# std::variant, restrict on "text" + std::string in optimised builds.
target_compile_options(brisel_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                                                 -Werror
                                                 $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>
                                                 $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)

# brisel_room(NAME [LINKS room...] [EXTERNAL target...]): the library of src/NAME, if it has sources.
function(brisel_room name)
  cmake_parse_arguments(ROOM "" "" "LINKS;EXTERNAL" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/${name}/*.cpp
                                      ${CMAKE_SOURCE_DIR}/src/${name}/*.h)
  if(sources)
    add_library(brisel_${name} STATIC ${sources})
    target_include_directories(brisel_${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
    target_link_libraries(brisel_${name} PRIVATE $<BUILD_INTERFACE:brisel_warnings>)
    set(kind PUBLIC)
    if(name STREQUAL qt)
      set_target_properties(brisel_${name} PROPERTIES AUTOMOC ON)
      # "slots" and "emit" are names like any other in the headers of the other rooms.
      target_compile_definitions(brisel_${name} PUBLIC QT_NO_KEYWORDS)
    endif()
  else()
    add_library(brisel_${name} INTERFACE)
    set(kind INTERFACE)
  endif()
  list(TRANSFORM ROOM_LINKS PREPEND brisel_)
  target_link_libraries(brisel_${name} ${kind} ${ROOM_LINKS} ${ROOM_EXTERNAL})
  set_target_properties(brisel_${name} PROPERTIES BRISEL_EXTERNAL "${ROOM_EXTERNAL}")
  add_library(Brisel::${name} ALIAS brisel_${name})
endfunction()

# brisel_test(NAME LINKS target...): one test program of tests/NAME.
function(brisel_test name)
  cmake_parse_arguments(TEST "" "" "LINKS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.cpp)
  if(NOT sources)
    return()
  endif()
  add_executable(test_${name} ${sources})
  target_include_directories(test_${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(test_${name} PRIVATE brisel_warnings brisel_test_support ${TEST_LINKS}
                                             GTest::gtest_main)
  target_compile_definitions(test_${name} PRIVATE BRISEL_SOURCE_DIR="${CMAKE_SOURCE_DIR}"
                                                  BRISEL_BINARY_DIR="${CMAKE_BINARY_DIR}")
  brisel_add_test(${name} COMMAND test_${name} ENVIRONMENT QT_QPA_PLATFORM=offscreen)
endfunction()

# brisel_add_test(NAME COMMAND ... [ENVIRONMENT ...]): a test under a name that tells apart the builds
# of which one run of CTest takes both.
function(brisel_add_test name)
  cmake_parse_arguments(TEST "" "" "COMMAND;ENVIRONMENT" ${ARGN})
  if(BRISEL_SANITIZE)
    string(APPEND name "_sanitized")
  endif()
  add_test(NAME ${name} COMMAND ${TEST_COMMAND})
  set_tests_properties(${name} PROPERTIES TIMEOUT 300 SKIP_RETURN_CODE 77
                                          ENVIRONMENT "${TEST_ENVIRONMENT}")
endfunction()
