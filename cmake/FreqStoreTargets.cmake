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

# The Qt headers that nearly every file includes, compiled once.
add_library(freqstore_pch OBJECT ${CMAKE_CURRENT_LIST_DIR}/pch.cpp)

function(freqstore_use_pch target)
  target_precompile_headers(${target} REUSE_FROM freqstore_pch)
endfunction()

# A folder of sources as an object library named TARGET with an include interface from the repository root.
function(freqstore_module target folder)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*.cpp ${PROJECT_SOURCE_DIR}/${folder}/*.h)
  if(NOT sources)
    set(sources ${PROJECT_SOURCE_DIR}/cmake/pch.cpp)
  endif()
  add_library(${target} OBJECT ${sources})
  target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR})
  target_link_libraries(${target} PUBLIC Qt6::Core Qt6::Gui Qt6::Widgets Qt6::Xml ${ARGN})
  set_target_properties(${target} PROPERTIES LINKER_LANGUAGE CXX)
  freqstore_use_pch(${target})
endfunction()

# The tests of one folder as one program; each test is a ctest test of its own.
function(freqstore_test folder)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/${folder}/*.cpp)
  if(NOT sources)
    return()
  endif()
  add_executable(test_${folder} ${sources} ${PROJECT_SOURCE_DIR}/tests/support/main.cpp)
  target_include_directories(test_${folder} PRIVATE ${PROJECT_SOURCE_DIR})
  target_link_libraries(test_${folder} PRIVATE ${ARGN} Qt6::Test GTest::gmock)
  target_compile_definitions(test_${folder} PRIVATE TEST_DATA_DIR="${PROJECT_SOURCE_DIR}/tests/data"
                                                    SAMPLES_DIR="${PROJECT_SOURCE_DIR}/samples")
  gtest_discover_tests(test_${folder} DISCOVERY_MODE PRE_TEST PROPERTIES ENVIRONMENT
                       "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8" TIMEOUT 300)
endfunction()
