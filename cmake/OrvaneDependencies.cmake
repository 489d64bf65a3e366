# Packages that the build needs. Each refusal names the Debian package that helps.

macro(orvane_require package debian_package)
  find_package(${package} QUIET ${ARGN})
  if(NOT ${package}_FOUND)
    message(FATAL_ERROR "Orvane needs ${package}: install the Debian package ${debian_package}.")
  endif()
endmacro()

orvane_require(Qt5 qtbase5-dev COMPONENTS Core Gui Widgets)
set(OpenGL_GL_PREFERENCE GLVND)
orvane_require(OpenGL libgl-dev COMPONENTS OpenGL)
if(Qt5_VERSION VERSION_LESS 5.15)
  message(FATAL_ERROR "Orvane needs Qt 5.15 or later, found ${Qt5_VERSION}.")
endif()
if(Qt5Gui_OPENGL_IMPLEMENTATION STREQUAL "GLESv2")
  message(FATAL_ERROR "Orvane needs a Qt built for desktop OpenGL, this one is built for OpenGL ES.")
endif()
