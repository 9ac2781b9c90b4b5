# Settings common to all targets, and one function per kind of target.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR};$ORIGIN")

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  # __TIME__ macros and the precompiled header's own time stamp do not change what is compiled.
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env
      CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
      ${CCACHE_PROGRAM})
  add_compile_options(-fpch-preprocess)
endif()

add_compile_options(-Wall -Wextra -Wshadow -Wconversion)
if(FREQSTORE_WERROR)
  add_compile_options(-Werror)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  # A list view's signal selectionChanged hides the slot of that name that Qt's own views have, on purpose.
  add_compile_options(-Wno-overloaded-virtual)
endif()
if(FREQSTORE_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
if(FREQSTORE_COVERAGE)
  add_compile_options(--coverage)
  add_link_options(--coverage)
endif()
if(FREQSTORE_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined)
  add_link_options(-fsanitize=address,undefined)
endif()

# Sources are globbed with CONFIGURE_DEPENDS throughout: a folder is a room, each file in it belongs to the room's
# target, and a test file that a list forgets would not be missed.

# The headers that nearly every file includes, compiled once for core modules, for those that know widgets, and for
# tests.
function(freqstore_pch kind)
  add_library(freqstore_pch_${kind} OBJECT ${PROJECT_SOURCE_DIR}/cmake/pch.cpp)
  set_target_properties(freqstore_pch_${kind} PROPERTIES AUTOMOC OFF)
  target_include_directories(freqstore_pch_${kind} PRIVATE ${PROJECT_SOURCE_DIR})
  target_link_libraries(freqstore_pch_${kind} PRIVATE ${ARGN})
  target_precompile_headers(freqstore_pch_${kind} PRIVATE ${PROJECT_SOURCE_DIR}/cmake/pch${kind}.h)
endfunction()

function(freqstore_use_pch target kind)
  target_precompile_headers(${target} REUSE_FROM freqstore_pch_${kind})
endfunction()

# The sources of one folder and those below it.
function(freqstore_sources result folder)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*.cpp ${PROJECT_SOURCE_DIR}/${folder}/*.h)
  set(${result} ${sources} PARENT_SCOPE)
endfunction()

# A room of the host as an object library. It links the rooms and the Qt libraries that it includes from: a core module
# that includes a widget does not compile.
function(freqstore_module module kind)
  freqstore_sources(sources host/${module})
  add_library(host_${module} OBJECT ${sources})
  target_include_directories(host_${module} PUBLIC ${PROJECT_SOURCE_DIR})
  target_link_libraries(host_${module} PUBLIC ${ARGN})
  freqstore_use_pch(host_${module} ${kind})
endfunction()

# The tests of one folder as one program; each test is a ctest test of its own.
function(freqstore_test folder)
  freqstore_sources(sources tests/${folder})
  add_executable(test_${folder} ${sources} ${PROJECT_SOURCE_DIR}/tests/support/main.cpp)
  target_include_directories(test_${folder} PRIVATE ${PROJECT_SOURCE_DIR})
  target_link_libraries(test_${folder} PRIVATE ${ARGN} Qt6::Test GTest::gmock)
  target_compile_definitions(test_${folder} PRIVATE SAMPLES_DIR="${PROJECT_SOURCE_DIR}/samples")
  freqstore_use_pch(test_${folder} tests)
  gtest_discover_tests(test_${folder} DISCOVERY_MODE PRE_TEST PROPERTIES ENVIRONMENT
                       "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;LANGUAGE=" TIMEOUT 300)
endfunction()
