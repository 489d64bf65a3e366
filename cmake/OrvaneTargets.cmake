# Compiler settings shared by every target of this project.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

if(NOT CMAKE_CXX_COMPILER_LAUNCHER)
  find_program(ORVANE_CCACHE ccache)
  if(ORVANE_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${ORVANE_CCACHE}")
  endif()
endif()

# Programs and libraries find ours from where they lie themselves, in the build tree as where they are
# installed: the paths that CMake would exchange end in an empty entry, which is the current folder.
# A parent project has folders of its own: there our installed libraries find one another.
set(CMAKE_INSTALL_RPATH "$ORIGIN" "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
if(PROJECT_IS_TOP_LEVEL)
  file(RELATIVE_PATH ORVANE_BIN_TO_LIB
    "${CMAKE_INSTALL_FULL_BINDIR}" "${CMAKE_INSTALL_FULL_LIBDIR}")
  set(CMAKE_BUILD_WITH_INSTALL_RPATH ON)
  set(CMAKE_INSTALL_RPATH "$ORIGIN" "$ORIGIN/../lib" "$ORIGIN/${ORVANE_BIN_TO_LIB}")
  list(REMOVE_DUPLICATES CMAKE_INSTALL_RPATH)
endif()

include(CheckCXXCompilerFlag)
check_cxx_compiler_flag(-fcf-protection=full ORVANE_HAS_CF_PROTECTION)

add_library(OrvaneOptions INTERFACE)
target_compile_options(OrvaneOptions INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion
  $<$<BOOL:${ORVANE_WERROR}>:-Werror>
  # NaN rules and the single-precision steps of the diagrams are part of their contract.
  -ffp-contract=off)
target_compile_definitions(OrvaneOptions INTERFACE QT_DEPRECATED_WARNINGS)
# What the program reads comes from strangers: a fault in it should end it, not do more.
target_compile_options(OrvaneOptions INTERFACE
  -fstack-protector-strong
  $<$<BOOL:${ORVANE_HAS_CF_PROTECTION}>:-fcf-protection=full>)
target_link_options(OrvaneOptions INTERFACE LINKER:-z,relro,-z,now)
if(NOT ORVANE_SANITIZE)
  target_compile_definitions(OrvaneOptions INTERFACE _GLIBCXX_ASSERTIONS)
  # Takes optimisation; undefined first, because some distributions' compilers set it themselves.
  target_compile_options(OrvaneOptions INTERFACE
    "$<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
endif()
if(ORVANE_SANITIZE)
  # "undefined" leaves out the conversion of an unrepresentable number to an integer.
  set(sanitizers address,undefined,float-cast-overflow)
  if(ORVANE_SANITIZE STREQUAL "thread")
    set(sanitizers thread)
  endif()
  target_compile_options(OrvaneOptions INTERFACE
    -fsanitize=${sanitizers} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_compile_definitions(OrvaneOptions INTERFACE _GLIBCXX_ASSERTIONS)
  target_link_options(OrvaneOptions INTERFACE -fsanitize=${sanitizers})

  add_library(OrvaneSanitizerDefaults OBJECT
    "${PROJECT_SOURCE_DIR}/tests/suppressions/SanitizerDefaults.cpp")
  target_link_libraries(OrvaneSanitizerDefaults PUBLIC ${CMAKE_DL_LIBS})
endif()

# orvane_target(<target>): warnings, sanitizers and moc for one of our targets.
function(orvane_target target)
  target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:OrvaneOptions>)
  set_target_properties(${target} PROPERTIES AUTOMOC ON)
  get_target_property(type ${target} TYPE)
  if(ORVANE_SANITIZE AND type STREQUAL "EXECUTABLE")
    target_link_libraries(${target} PRIVATE OrvaneSanitizerDefaults)
  endif()
endfunction()

# orvane_headers(<variable> <folder>): the headers of one library, as <subsystem>/<class>.h.
function(orvane_headers variable folder)
  file(GLOB headers CONFIGURE_DEPENDS RELATIVE "${folder}" "${folder}/*/*.h")
  set(${variable} "${headers}" PARENT_SCOPE)
endfunction()
