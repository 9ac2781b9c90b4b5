# Headers, libraries, programs, samples and the CMake package that plug-ins are built against.
include(CMakePackageConfigHelpers)
install(TARGETS host frequencystore EXPORT FrequencyStoreTargets)
install(DIRECTORY host controls DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/frequencystore FILES_MATCHING PATTERN "*.h")
install(DIRECTORY samples DESTINATION ${CMAKE_INSTALL_DATADIR}/frequencystore PATTERN "*.py" EXCLUDE)
install(FILES docs/freqstore.1 docs/freqstore-cli.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(EXPORT FrequencyStoreTargets NAMESPACE FrequencyStore::
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/FrequencyStore)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/FrequencyStoreConfig.cmake.in
                              ${CMAKE_CURRENT_BINARY_DIR}/FrequencyStoreConfig.cmake
                              INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/FrequencyStore)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/FrequencyStoreConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/FrequencyStoreConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/FrequencyStoreConfigVersion.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/FrequencyStore)
