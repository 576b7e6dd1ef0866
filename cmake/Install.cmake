# What an installed Kestrum consists of. The program keeps its configuration, calibrations and log beside itself, so
# program, reader and info text share one folder that its user must be able to write: PREFIX/opt/kestrum.
set(KESTRUM_APPLICATION_FOLDER opt/kestrum)

# The info text lies beside the built program, too.
configure_file(src/ui/Kestrum.txt ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/Kestrum.txt COPYONLY)

if(NOT KESTRUM_DESKTOP OR WIN32)
  return()
endif()

install(
  TARGETS Kestrum Posdex Orvandi rigbridge
  RUNTIME DESTINATION ${KESTRUM_APPLICATION_FOLDER}
  COMPONENT application)
install(
  FILES src/ui/Kestrum.txt LICENSE
  DESTINATION ${KESTRUM_APPLICATION_FOLDER}
  COMPONENT application)

# The commands are links: the programs look for their files where the links lead.
install(
  CODE [[
    set(bin "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/bin")
    file(MAKE_DIRECTORY "${bin}")
    foreach(program Kestrum Orvandi rigbridge)
      string(TOLOWER ${program} command)
      file(CREATE_LINK ../opt/kestrum/${program} "${bin}/${command}" SYMBOLIC)
      message(STATUS "Installing: ${bin}/${command}")
    endforeach()
  ]]
  COMPONENT system)

# The prefix is known when installing, and PREFIX/bin need not be searched by the desktop: so the full path.
install(CODE "set(KESTRUM_PACKAGING \"${CMAKE_CURRENT_SOURCE_DIR}/packaging\")" COMPONENT system)
install(
  CODE [[
    set(KESTRUM_PROGRAM "${CMAKE_INSTALL_PREFIX}/opt/kestrum/Kestrum")
    string(REPLACE "%" "%%" KESTRUM_COMMAND "${KESTRUM_PROGRAM}")
    set(entry "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/share/applications/org.kestrum.kestrum.desktop")
    configure_file("${KESTRUM_PACKAGING}/desktop/org.kestrum.kestrum.desktop.in" "${entry}" @ONLY)
    message(STATUS "Installing: ${entry}")
    set(RIGBRIDGE_PROGRAM "${CMAKE_INSTALL_PREFIX}/opt/kestrum/rigbridge")
    string(REPLACE "%" "%%" RIGBRIDGE_COMMAND "${RIGBRIDGE_PROGRAM}")
    set(entry "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/share/applications/org.kestrum.rigbridge.desktop")
    configure_file("${KESTRUM_PACKAGING}/desktop/org.kestrum.rigbridge.desktop.in" "${entry}" @ONLY)
    set(ORVANDI_PROGRAM "${CMAKE_INSTALL_PREFIX}/opt/kestrum/Orvandi")
    string(REPLACE "%" "%%" ORVANDI_COMMAND "${ORVANDI_PROGRAM}")
    set(entry "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/share/applications/org.kestrum.orvandi.desktop")
    configure_file("${KESTRUM_PACKAGING}/desktop/org.kestrum.orvandi.desktop.in" "${entry}" @ONLY)
    message(STATUS "Installing: ${entry}")
  ]]
  COMPONENT system)
install(
  FILES packaging/desktop/org.kestrum.kestrum.svg packaging/desktop/org.kestrum.orvandi.svg
  DESTINATION share/icons/hicolor/scalable/apps
  COMPONENT system)
install(
  FILES packaging/desktop/org.kestrum.kestrum.metainfo.xml
  DESTINATION share/metainfo
  COMPONENT system)
install(
  FILES packaging/man/kestrum.1 packaging/man/posdex.1 packaging/man/orvandi.1 packaging/man/drivesim.1
        packaging/man/rigbridge.1
  DESTINATION share/man/man1
  COMPONENT system)

# `cpack` packs the application folder alone, as opt/kestrum; it runs wherever it is unpacked.
set(CPACK_GENERATOR TGZ)
set(CPACK_PACKAGE_NAME kestrum)
set(CPACK_PACKAGE_VENDOR "The Kestrum developers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Log how strong a transmitter is heard, and where")
set(CPACK_RESOURCE_FILE_LICENSE ${CMAKE_CURRENT_SOURCE_DIR}/LICENSE)
set(CPACK_PACKAGE_FILE_NAME kestrum-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
set(CPACK_COMPONENTS_ALL application)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
include(CPack)
