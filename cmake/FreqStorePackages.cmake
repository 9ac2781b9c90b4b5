# Debian packages, one per component: "cpack -G DEB" in a build of the preset "package".
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME freqstore)
set(CPACK_PACKAGE_VENDOR "Frequency Store Developers")
set(CPACK_PACKAGE_CONTACT "Frequency Store Developers <freqstore@example.org>")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
                                                WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL libraries programs development documentation)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 0local1)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR})
set(debian_version ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})

# The package of a component, with the copyright and changelog that each package carries.
macro(freqstore_package component package section description)
  string(TOUPPER ${component} COMPONENT)
  set(CPACK_DEBIAN_${COMPONENT}_PACKAGE_NAME ${package})
  set(CPACK_DEBIAN_${COMPONENT}_PACKAGE_SECTION ${section})
  set(CPACK_DEBIAN_${COMPONENT}_DESCRIPTION "${description}")
  install(FILES packaging/copyright DESTINATION ${doc}/${package} COMPONENT ${component})
  configure_file(packaging/changelog.in ${PROJECT_BINARY_DIR}/changelog.Debian @ONLY)
  freqstore_install_gzipped(${PROJECT_BINARY_DIR}/changelog.Debian ${doc}/${package} changelog.Debian ${component})
  freqstore_install_gzipped(${PROJECT_SOURCE_DIR}/CHANGELOG.md ${doc}/${package} changelog ${component})
  set(overrides packaging/${package}.lintian-overrides)
  if(EXISTS ${PROJECT_SOURCE_DIR}/${overrides})
    install(FILES ${overrides} DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME ${package}
            COMPONENT ${component})
  endif()
endmacro()

set(about "Frequency Store keeps lists of radio frequencies with their bandwidth,
demodulation, threat class and priority in one place, shows them in
tables and along a frequency axis, and exchanges them between files,
lists and programs.")
freqstore_package(libraries libfreqstore0 libs "libraries of the frequency store
${about}
.
This package holds the shared libraries.")
freqstore_package(programs freqstore hamradio "lists of frequencies for radio monitoring
${about}
.
This package holds the workstation, the command-line program and
sample lists.")
freqstore_package(development libfreqstore-dev libdevel "libraries of the frequency store (development files)
${about}
.
This package holds the headers and the CMake package with which plug-ins
are built.")
freqstore_package(documentation freqstore-doc doc "lists of frequencies for radio monitoring (documentation)
${about}
.
This package holds the description of file formats and architecture, XML
schemas, and an example of a plug-in.")

# The interface between library and program is not kept stable: what is built together is installed together.
set(same_libraries "libfreqstore0 (= ${debian_version})")
set(CPACK_DEBIAN_LIBRARIES_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_LIBRARIES_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/packaging/triggers)
set(CPACK_DEBIAN_PROGRAMS_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PROGRAMS_PACKAGE_DEPENDS "${same_libraries}")
# A recommended broker would start on every seat; rigctld is for those who share a radio between programs.
set(CPACK_DEBIAN_PROGRAMS_PACKAGE_SUGGESTS "freqstore-doc, libhamlib-utils, mosquitto")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${same_libraries}, qt6-base-dev")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS freqstore-doc)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)
include(CPack)
