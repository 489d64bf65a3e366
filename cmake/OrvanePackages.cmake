# What a desktop knows the workbench by, and Debian packages of all that is installed: cpack -G DEB, or
# scripts/package, which also tries them.

set(ORVANE_PACKAGE_CONTACT "the Orvane authors <authors@orvane.invalid>" CACHE STRING
  "Maintainer of the Debian packages, as NAME <ADDRESS>")

if(TARGET orvane-workbench)
  set(desktop "${PROJECT_SOURCE_DIR}/workbench/desktop")
  set(share "${CMAKE_INSTALL_DATADIR}")
  install(FILES "${desktop}/orvane-workbench.desktop" DESTINATION "${share}/applications"
    COMPONENT Workbench)
  install(FILES "${desktop}/orvane-workbench.svg"
    DESTINATION "${share}/icons/hicolor/scalable/apps" COMPONENT Workbench)
  install(FILES "${desktop}/orvane-sigmf.xml" DESTINATION "${share}/mime/packages"
    COMPONENT Workbench)
  option(ORVANE_BUILD_MANUAL "Make the manual page, which is what --help says; takes help2man" OFF)
  if(ORVANE_BUILD_MANUAL)
    find_program(ORVANE_HELP2MAN help2man REQUIRED)
    set(page "${PROJECT_BINARY_DIR}/orvane-workbench.1")
    # From where the program lies: help2man takes a path with a space for two words.
    add_custom_command(OUTPUT "${page}" DEPENDS orvane-workbench VERBATIM
      WORKING_DIRECTORY "$<TARGET_FILE_DIR:orvane-workbench>"
      COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8
        "${ORVANE_HELP2MAN}" --no-info --output "${page}"
        --name "shows and measures sampled signals" "./$<TARGET_FILE_NAME:orvane-workbench>")
    add_custom_target(manual_page ALL DEPENDS "${page}")
    install(FILES "${page}" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT Workbench)
  endif()
endif()

# The rest is not for a parent project, whose documents have the same folder and perhaps the same names.
if(NOT PROJECT_IS_TOP_LEVEL)
  return()
endif()

install(FILES README.md CHANGELOG.md SECURITY.md LICENSE
  DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT Documentation)
install(DIRECTORY docs DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT Documentation)

set(CPACK_PACKAGE_CONTACT "${ORVANE_PACKAGE_CONTACT}")
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_COMPONENTS_ALL Runtime Development Documentation)
if(TARGET orvane-workbench)
  list(APPEND CPACK_COMPONENTS_ALL Workbench)
endif()
if(TARGET OrvaneDesigner)
  list(APPEND CPACK_COMPONENTS_ALL Designer)
endif()
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")

set(runtime "liborvane${ORVANE_SOVERSION}")
set(same "(= \${version})")
string(REPLACE "\${version}" "${PROJECT_VERSION}" same "${same}")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME "${runtime}")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "Diagrams of sampled signals for Qt applications
 Time, eye and IQ diagrams as widgets that follow named values: the libraries.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME liborvane-dev)
set(development5 "qtbase5-dev (>= 5.15)")
set(development6 "qt6-base-dev (>= 6.2), libqt6opengl6-dev")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "${runtime} ${same}, ${development${ORVANE_QT}}, libgl-dev")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "Diagrams of sampled signals: development files
 Headers, and the files by which CMake and pkg-config find the libraries.")
set(CPACK_DEBIAN_WORKBENCH_PACKAGE_NAME orvane-workbench)
set(CPACK_DEBIAN_WORKBENCH_PACKAGE_SECTION electronics)
set(CPACK_DEBIAN_WORKBENCH_PACKAGE_DEPENDS "${runtime} ${same}, libqt${ORVANE_QT}svg${ORVANE_QT}")
set(CPACK_COMPONENT_WORKBENCH_DESCRIPTION "Shows, receives and measures sampled signals
 A signal from a recording or a radio over time, as an eye and as a constellation, with what
 each measures.")
set(CPACK_DEBIAN_DESIGNER_PACKAGE_NAME orvane-designer)
set(CPACK_DEBIAN_DESIGNER_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DESIGNER_PACKAGE_DEPENDS "${runtime} ${same}")
set(CPACK_COMPONENT_DESIGNER_DESCRIPTION "Diagrams of sampled signals: plug-in for Qt Designer
 Views in forms, told by properties which values they show.")
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_NAME orvane-doc)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_SECTION doc)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)
set(CPACK_COMPONENT_DOCUMENTATION_DESCRIPTION "Diagrams of sampled signals: documentation
 How the library is embedded and what the workbench measures.")
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER "${component}" upper)
  set(folder "${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME}")
  install(FILES LICENSE DESTINATION "${folder}" RENAME copyright COMPONENT ${component} EXCLUDE_FROM_ALL)
endforeach()
include(CPack)
