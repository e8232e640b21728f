# host/desktop/: the desktop window, the program kvdesign-desktop, which kvdesign without arguments starts. It
# is a program of its own so that kvdesign itself loads no window system. Needs Qt 6 Widgets; all else builds
# without.

file(GLOB kv_desktop_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/host/desktop/*.cpp")
file(GLOB kv_desktop_main CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/host/desktop/main.cpp")
list(REMOVE_ITEM kv_desktop_sources ${kv_desktop_main})

if(NOT kv_desktop_sources)
  return()
endif()
if(NOT KVDESIGN_DESKTOP)
  message(STATUS "Desktop window: left out (KVDESIGN_DESKTOP is off)")
  return()
endif()
find_package(Qt6 6.4 QUIET COMPONENTS Widgets)
if(NOT Qt6_FOUND)
  message(STATUS "Desktop window: left out, Qt 6 Widgets is not there (Debian: qt6-base-dev)")
  return()
endif()
message(STATUS "Desktop window: built with Qt ${Qt6_VERSION}")

add_library(kvdesign_desktop STATIC ${kv_desktop_sources})
set_target_properties(kvdesign_desktop PROPERTIES AUTOMOC ON)
target_compile_definitions(kvdesign_desktop PUBLIC QT_NO_KEYWORDS QT_NO_CAST_TO_ASCII)
target_link_libraries(kvdesign_desktop PUBLIC kvdesign_host Qt6::Widgets)
kv_flags(kvdesign_desktop)

# English. tools/translations.sh brings the texts up to what the sources say.
get_target_property(kv_qmake Qt6::qmake IMPORTED_LOCATION)
cmake_path(GET kv_qmake PARENT_PATH kv_qt_bin)
find_program(KVDESIGN_LRELEASE NAMES lrelease lrelease-qt6 HINTS "${kv_qt_bin}" /usr/lib/qt6/bin
             DOC "Qt's compiler of translations")
mark_as_advanced(KVDESIGN_LRELEASE)
if(KVDESIGN_LRELEASE)
  set(kv_catalogue "${PROJECT_BINARY_DIR}/i18n/kvdesign_en.qm")
  set(kv_english "${PROJECT_SOURCE_DIR}/host/desktop/kvdesign_en.ts")
  file(MAKE_DIRECTORY "${PROJECT_BINARY_DIR}/i18n")
  add_custom_command(
    OUTPUT "${kv_catalogue}"
    COMMAND "${KVDESIGN_LRELEASE}" -silent "${kv_english}" -qm "${kv_catalogue}"
    DEPENDS "${kv_english}"
    COMMENT "Making the English catalogue of the desktop window"
    VERBATIM)
  # Those who link the library get it with it.
  qt6_add_resources(kvdesign_desktop kvdesign_i18n PREFIX /i18n BASE "${PROJECT_BINARY_DIR}/i18n" FILES
                    "${kv_catalogue}")
else()
  message(STATUS "Desktop window: in Italian only, Qt's lrelease is not there (Debian: qt6-l10n-tools)")
endif()

if(kv_desktop_main)
  add_executable(kvdesign-desktop "${kv_desktop_main}" "${PROJECT_SOURCE_DIR}/host/desktop/desktop.qrc")
  set_target_properties(kvdesign-desktop PROPERTIES AUTORCC ON RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}")
  target_link_libraries(kvdesign-desktop PRIVATE kvdesign_desktop)
  kv_flags(kvdesign-desktop)
endif()
