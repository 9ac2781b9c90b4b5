# What is installed, by component: libraries, programs with what belongs to a desktop, development (headers and the
# CMake package that plug-ins are built against), and documentation.
include(CMakePackageConfigHelpers)
set(doc ${CMAKE_INSTALL_DATADIR}/doc)

# Installs a file compressed, as Debian wants its manual pages and changelogs; without a time stamp inside.
function(freqstore_install_gzipped source destination name component)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${source})
  set(compressed ${CMAKE_CURRENT_BINARY_DIR}/gzipped/${component}/${name}.gz)
  file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/gzipped/${component})
  execute_process(COMMAND gzip -9n -c INPUT_FILE ${source} OUTPUT_FILE ${compressed} COMMAND_ERROR_IS_FATAL ANY)
  install(FILES ${compressed} DESTINATION ${destination} COMPONENT ${component})
endfunction()

install(TARGETS host frequencystore EXPORT FrequencyStoreTargets
        LIBRARY COMPONENT libraries NAMELINK_COMPONENT development)

foreach(page freqstore.1 freqstore-cli.1)
  freqstore_install_gzipped(${PROJECT_SOURCE_DIR}/docs/${page} ${CMAKE_INSTALL_MANDIR}/man1 ${page} programs)
endforeach()
install(DIRECTORY samples DESTINATION ${CMAKE_INSTALL_DATADIR}/frequencystore COMPONENT programs
        PATTERN "*.py" EXCLUDE)
install(FILES packaging/freqstore.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT programs)
install(FILES packaging/localdomain.localhost.freqstore.metainfo.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo COMPONENT programs)
install(FILES packaging/freqstore.mime.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages
        RENAME freqstore.xml COMPONENT programs)
install(FILES workstation/icons/freqstore.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps
        COMPONENT programs)

install(DIRECTORY docs/sharing DESTINATION ${doc}/freqstore COMPONENT programs)
install(DIRECTORY docs/guide/ DESTINATION ${doc}/freqstore/guide COMPONENT programs FILES_MATCHING PATTERN "*.md")
install(DIRECTORY ${PROJECT_BINARY_DIR}/guide/ DESTINATION ${doc}/freqstore/guide COMPONENT programs OPTIONAL
        FILES_MATCHING PATTERN "*.png")

install(DIRECTORY host controls DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/frequencystore COMPONENT development
        FILES_MATCHING PATTERN "*.h")
install(EXPORT FrequencyStoreTargets NAMESPACE FrequencyStore::
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/FrequencyStore COMPONENT development)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/FrequencyStoreConfig.cmake.in
                              ${CMAKE_CURRENT_BINARY_DIR}/FrequencyStoreConfig.cmake
                              INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/FrequencyStore)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/FrequencyStoreConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/FrequencyStoreConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/FrequencyStoreConfigVersion.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/FrequencyStore COMPONENT development)

install(FILES README.md docs/architecture.md docs/file-formats.md docs/translating.md docs/tree.md
              docs/walks.md docs/screenshot.png
              docs/frequencystorelist.xsd docs/detectionresultlist.xsd
        DESTINATION ${doc}/freqstore-doc COMPONENT documentation)
install(DIRECTORY docs/decisions DESTINATION ${doc}/freqstore-doc COMPONENT documentation)
install(DIRECTORY examples DESTINATION ${doc}/freqstore-doc COMPONENT documentation)
