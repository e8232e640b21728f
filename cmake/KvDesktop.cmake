# host/desktop/: the desktop window, the program kvdesign-desktop, which kvdesign without arguments starts. It
# is a program of its own so that kvdesign itself loads no window system. Needs Qt 6 Widgets; all else builds
# without.

file(GLOB kv_desktop_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/host/desktop/*.cpp")
file(GLOB kv_desktop_main CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/host/desktop/main.cpp")
list(REMOVE_ITEM kv_desktop_sources ${kv_desktop_main})

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

if(kv_desktop_main)
  add_executable(kvdesign-desktop "${kv_desktop_main}" "${PROJECT_SOURCE_DIR}/host/desktop/desktop.qrc")
  set_target_properties(kvdesign-desktop PROPERTIES AUTORCC ON RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}")
  target_link_libraries(kvdesign-desktop PRIVATE kvdesign_desktop)
  kv_flags(kvdesign-desktop)
endif()
