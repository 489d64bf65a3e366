# Translation catalogues: translations/<catalogue>_<language>.ts, compiled into the resources of the
# target that owns the texts, under ":/translations". "update_translations" reads the sources again; a
# parent project may have a target of that name itself.

orvane_require_qt(LinguistTools qttools5-dev qt6-tools-dev)
set(ORVANE_LANGUAGES de)
if(PROJECT_IS_TOP_LEVEL)
  add_custom_target(update_translations)
endif()

# orvane_translations(<target> <catalogue> <source folder>...)
function(orvane_translations target catalogue)
  set(files "")
  foreach(language IN LISTS ORVANE_LANGUAGES)
    set(ts "${PROJECT_SOURCE_DIR}/translations/${catalogue}_${language}.ts")
    set(qm "${CMAKE_CURRENT_BINARY_DIR}/${catalogue}_${language}.qm")
    add_custom_command(OUTPUT "${qm}" DEPENDS "${ts}" VERBATIM
      COMMAND Qt${ORVANE_QT}::lrelease -silent "${ts}" -qm "${qm}")
    target_sources(${target} PRIVATE "${qm}")
    string(APPEND files "<file>${catalogue}_${language}.qm</file>")
    if(PROJECT_IS_TOP_LEVEL)
      add_custom_target(update_${catalogue}_${language} VERBATIM
        COMMAND Qt${ORVANE_QT}::lupdate -silent -locations none -no-obsolete
          -source-language en -target-language ${language}
          -I "${PROJECT_SOURCE_DIR}" -I "${PROJECT_SOURCE_DIR}/src" ${ARGN} -ts "${ts}")
      add_dependencies(update_translations update_${catalogue}_${language})
    endif()
  endforeach()
  set(qrc "${CMAKE_CURRENT_BINARY_DIR}/${catalogue}Translations.qrc")
  file(WRITE "${qrc}.new" "<RCC><qresource prefix=\"/translations\">${files}</qresource></RCC>\n")
  configure_file("${qrc}.new" "${qrc}" COPYONLY)
  target_sources(${target} PRIVATE "${qrc}")
  set_target_properties(${target} PROPERTIES AUTORCC ON)
endfunction()
