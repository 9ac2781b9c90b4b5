# The rooms of the house; an arrow runs only from a later line to an earlier one.
freqstore_pch(core Qt6::Core)
freqstore_pch(widgets Qt6::Widgets)

freqstore_module(base core Qt6::Core)
target_link_libraries(host_base PRIVATE ${GeographicLib_LIBRARIES})
freqstore_module(valuetree core host_base)
freqstore_module(startup core host_valuetree)
freqstore_module(report core host_valuetree)
freqstore_module(freqstorexml core host_report)
freqstore_module(gui widgets host_startup Qt6::Widgets)
freqstore_module(widgets widgets host_gui)
freqstore_module(freqlist widgets host_widgets host_freqstorexml)

# One shared library, since the tree, the store and the error handler exist once in a process.
add_library(host SHARED)
foreach(module base valuetree startup report freqstorexml gui widgets freqlist)
  target_sources(host PRIVATE $<TARGET_OBJECTS:host_${module}>)
endforeach()
target_include_directories(host PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
                                       $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/frequencystore>)
target_link_libraries(host PUBLIC Qt6::Widgets PRIVATE ${GeographicLib_LIBRARIES})
set_target_properties(host PROPERTIES OUTPUT_NAME freqstorehost SOVERSION 0 LINKER_LANGUAGE CXX AUTOMOC OFF)

freqstore_sources(sources controls/frequencystore)
add_library(frequencystore SHARED ${sources})
target_link_libraries(frequencystore PUBLIC host Qt6::Xml)
set_target_properties(frequencystore PROPERTIES SOVERSION 0)
freqstore_use_pch(frequencystore widgets)

# The names that the installed package has, so that a program is written the same way in here and out there.
add_library(FrequencyStore::host ALIAS host)
add_library(FrequencyStore::frequencystore ALIAS frequencystore)

# Rooms of the programs.
function(freqstore_part part library kind)
  freqstore_sources(sources ${part})
  add_library(${part} STATIC ${sources})
  target_link_libraries(${part} PUBLIC FrequencyStore::${library} ${ARGN})
  freqstore_use_pch(${part} ${kind})
endfunction()
freqstore_part(sweep host core)
freqstore_part(interchange host core)
if(FREQSTORE_FUZZ) # RapidJSON adds to a null pointer where its stack is empty
  set_source_files_properties(interchange/jsonevents.cpp PROPERTIES COMPILE_OPTIONS -fno-sanitize=pointer-overflow)
endif()
freqstore_part(receiver frequencystore widgets)
target_link_libraries(receiver PRIVATE Qt6::Network PkgConfig::Hamlib Threads::Threads)
freqstore_part(scan frequencystore widgets receiver)
pkg_check_modules(Mosquitto REQUIRED IMPORTED_TARGET libmosquitto)
freqstore_part(link host core)
target_link_libraries(link PRIVATE PkgConfig::Mosquitto)

# Everything of a program but main() is a library of its own, so that tests can call it.
function(freqstore_program name folder)
  freqstore_sources(sources ${folder})
  list(REMOVE_ITEM sources ${PROJECT_SOURCE_DIR}/${folder}/main.cpp)
  add_library(${folder}_lib STATIC ${sources})
  target_link_libraries(${folder}_lib PUBLIC FrequencyStore::frequencystore sweep interchange receiver scan link)
  target_compile_definitions(${folder}_lib PUBLIC FREQSTORE_VERSION="${PROJECT_VERSION}")
  freqstore_use_pch(${folder}_lib widgets)
  add_executable(${name} ${folder}/main.cpp)
  target_link_libraries(${name} PRIVATE ${folder}_lib)
  install(TARGETS ${name} COMPONENT programs)
endfunction()
freqstore_program(freqstore workstation)
file(GLOB icons CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/workstation/icons/*.svg)
qt_add_resources(workstation_lib icons PREFIX /icons BASE workstation/icons FILES ${icons})
target_link_libraries(workstation_lib PRIVATE Qt6::DBus Qt6::Svg qt6keychain ${GeographicLib_LIBRARIES} PUBLIC Qt6::PrintSupport)
qt_add_resources(workstation_lib licence PREFIX / FILES LICENSE)
target_sources(workstation_lib PRIVATE workstation/bandplan/bandplan.qrc)
set_target_properties(workstation_lib PROPERTIES AUTORCC ON)
# The guide lies in the program; its pictures, which the target guide lets the program take, lie beside the texts.
file(GLOB_RECURSE guide CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/docs/guide/*.md)
qt_add_resources(workstation_lib guide PREFIX /guide BASE docs/guide FILES ${guide})
freqstore_program(freqstore-cli cli)

# The window's languages lie in the program: texts of the libraries, too, which stay English in any other one.
file(GLOB translations CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/translations/*.ts)
qt_add_lrelease(workstation_lib TS_FILES ${translations} QM_FILES_OUTPUT_VARIABLE compiled_translations
                OPTIONS -silent)
qt_add_resources(workstation_lib translations PREFIX /translations BASE ${PROJECT_BINARY_DIR}
                 FILES ${compiled_translations})
if(NOT CMAKE_CROSSCOMPILING AND NOT FREQSTORE_FUZZ)
  foreach(language de en)
    set(pictures ${PROJECT_BINARY_DIR}/guide/${language})
    set(own ${PROJECT_BINARY_DIR}/guide-${language})
    add_custom_command(
      OUTPUT ${pictures}.stamp
      COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 LANGUAGE= XDG_RUNTIME_DIR=${PROJECT_BINARY_DIR}
              $<TARGET_FILE:freqstore> --data ${own} --config ${own} --language ${language} --guide ${pictures}
      COMMAND ${CMAKE_COMMAND} -E touch ${pictures}.stamp
      DEPENDS freqstore
      COMMENT "Taking the pictures of the guide (${language})"
      VERBATIM)
    list(APPEND guide_stamps ${pictures}.stamp)
  endforeach()
  add_custom_target(guide DEPENDS ${guide_stamps})
endif()
# By hand, as it writes into the sources.
add_custom_target(update_translations
                  COMMAND ${PROJECT_SOURCE_DIR}/translations/update $<TARGET_FILE:Qt6::lupdate>
                          ${PROJECT_SOURCE_DIR}/translations -no-obsolete)
