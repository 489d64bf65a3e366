# What cmake --install puts where: the libraries, their headers and the package files with which
# find_package(Orvane) gives Orvane::Diagrams and Orvane::Platform, and the workbench. Projects that
# take the source tree instead find the same headers under the same names, by files that include them.

include(CMakePackageConfigHelpers)

set(ORVANE_HEADER_DIR "${CMAKE_INSTALL_INCLUDEDIR}/orvane")
set(ORVANE_PACKAGE_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/Orvane")

# Headers that only sources of their own library include.
set(ORVANE_INTERNAL_HEADERS
  base/AxisPixel.h
  base/GuiThread.h
  base/WarnOnce.h
  base/QtVersions.h
  chart/ChartPicture.h
  chart/CurveRaster.h
  glbase/AxisLabelBoxes.h
  glbase/DeviceRaster.h
  glbase/GLSurface.h
  glbase/KeptPixels.h
  glbase/KeptTexts.h
  glbase/PixelTarget.h
  glbase/StrokeRuns.h
  glwidgets/AxisZoom.h
  gui/ColorPage.h
  values/SettingsStore.h
  density/CursorSnap.h
  density/LevelFinder.h
  density/MaskDrawing.h
  density/PlotData.h
  density/PlotFrame.h
  density/PlotPainter.h
  density/PlotState.h
  density/PlotTexts.h
  density/PlotView.h
  foundations/DiagramDialogs.h
  foundations/DiagramFrame.h
  foundations/Extent.h
  foundations/TraceHistory.h
  time/Quantiser.h
  eye/EyeScene.h
  views/ViewFrame.h)

set(ORVANE_TREE "${PROJECT_BINARY_DIR}/include/orvane")
# orvane_forwarder(<file> <header>): a file that includes a header.
function(orvane_forwarder file header)
  file(CONFIGURE OUTPUT "${file}" CONTENT "#pragma once\n#include \"@header@\"\n" @ONLY)
endfunction()

orvane_headers(platform_headers "${PROJECT_SOURCE_DIR}/platform")
list(REMOVE_ITEM platform_headers ${ORVANE_INTERNAL_HEADERS})
set(ORVANE_PUBLIC_HEADERS "")
foreach(header IN LISTS platform_headers)
  string(APPEND ORVANE_PUBLIC_HEADERS " \"${PROJECT_SOURCE_DIR}/platform/${header}\"")
  get_filename_component(folder "${header}" DIRECTORY)
  orvane_forwarder("${ORVANE_TREE}/platform/${header}" "${PROJECT_SOURCE_DIR}/platform/${header}")
  install(FILES "${PROJECT_SOURCE_DIR}/platform/${header}"
    DESTINATION "${ORVANE_HEADER_DIR}/platform/${folder}" COMPONENT Development)
endforeach()

# The library's classes are included as <orvane/Class.h>, whichever folder they live in.
orvane_headers(library_headers "${PROJECT_SOURCE_DIR}/src")
list(REMOVE_ITEM library_headers ${ORVANE_INTERNAL_HEADERS})
if(NOT TARGET OrvaneDesigner)
  list(FILTER library_headers EXCLUDE REGEX "^designer/")
endif()
foreach(header IN LISTS library_headers)
  string(APPEND ORVANE_PUBLIC_HEADERS " \"${PROJECT_SOURCE_DIR}/src/${header}\"")
  get_filename_component(folder "${header}" DIRECTORY)
  get_filename_component(name "${header}" NAME)
  set(forwarder "${PROJECT_BINARY_DIR}/forwarders/${name}")
  orvane_forwarder("${forwarder}" "${header}")
  foreach(path IN ITEMS "${name}" "${header}")
    orvane_forwarder("${ORVANE_TREE}/${path}" "${PROJECT_SOURCE_DIR}/src/${header}")
  endforeach()
  install(FILES "${PROJECT_SOURCE_DIR}/src/${header}" DESTINATION "${ORVANE_HEADER_DIR}/${folder}"
    COMPONENT Development)
  install(FILES "${forwarder}" DESTINATION "${ORVANE_HEADER_DIR}" COMPONENT Development)
endforeach()

# Tests look into classes as their friend; who takes the package has no such access.
install(CODE "
  file(GLOB_RECURSE headers \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${ORVANE_HEADER_DIR}/*.h\")
  foreach(header IN LISTS headers)
    file(READ \"\${header}\" text)
    string(REGEX REPLACE \"\n *(friend )?struct (::)?TestAccess;\" \"\" kept \"\${text}\")
    if(NOT kept STREQUAL text)
      file(WRITE \"\${header}\" \"\${kept}\")
    endif()
  endforeach()" COMPONENT Development)

set(ORVANE_LIBRARIES OrvaneDiagrams OrvanePlatform)
if(TARGET OrvaneDesigner)
  list(APPEND ORVANE_LIBRARIES OrvaneDesigner)
  install(TARGETS OrvaneDesignerPlugin COMPONENT Designer
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}/qt${ORVANE_QT}/plugins/designer")
endif()
install(TARGETS ${ORVANE_LIBRARIES} EXPORT OrvaneTargets
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT Runtime NAMELINK_COMPONENT Development
  ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT Development)
install(EXPORT OrvaneTargets NAMESPACE Orvane:: DESTINATION "${ORVANE_PACKAGE_DIR}"
  COMPONENT Development)
if(TARGET orvane-workbench)
  install(TARGETS orvane-workbench RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT Workbench)
endif()

configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/OrvaneConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/OrvaneConfig.cmake" INSTALL_DESTINATION "${ORVANE_PACKAGE_DIR}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/OrvaneConfigVersion.cmake"
  COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/OrvaneConfig.cmake"
  "${PROJECT_BINARY_DIR}/OrvaneConfigVersion.cmake" DESTINATION "${ORVANE_PACKAGE_DIR}"
  COMPONENT Development)
file(RELATIVE_PATH ORVANE_PC_TO_PREFIX "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
list(TRANSFORM ORVANE_QT_MODULES PREPEND "Qt${ORVANE_QT}" OUTPUT_VARIABLE requires)
list(TRANSFORM requires APPEND " >= ${ORVANE_QT_LEAST}")
string(JOIN ", " ORVANE_PC_REQUIRES ${requires} gl)
set(ORVANE_PC_LIBS "-lOrvaneDiagrams -lOrvanePlatform")
if(NOT BUILD_SHARED_LIBS)
  string(PREPEND ORVANE_PC_LIBS "-Wl,-u,_Z18OrvaneLibraryEntry13LibraryReason ")
endif()
configure_file("${PROJECT_SOURCE_DIR}/cmake/orvane.pc.in" "${PROJECT_BINARY_DIR}/orvane.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/orvane.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig"
  COMPONENT Development)

# Where doxygen is installed, "reference" writes what the headers say into the folder reference.
configure_file("${PROJECT_SOURCE_DIR}/docs/Doxyfile.in" "${PROJECT_BINARY_DIR}/Doxyfile" @ONLY)
if(PROJECT_IS_TOP_LEVEL)
  add_custom_target(reference COMMAND doxygen "${PROJECT_BINARY_DIR}/Doxyfile" VERBATIM)
endif()
