# What is installed: the core's library and headers with a package for find_package(KvDesign), and the
# programs.

include(CMakePackageConfigHelpers)

set(kv_package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/KvDesign")

install(TARGETS kvdesign_core EXPORT KvDesignTargets ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}")
if(TARGET kvdesign)
  install(TARGETS kvdesign RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
endif()
if(TARGET KvDesSvr)
  install(TARGETS KvDesSvr RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
endif()
if(TARGET kvdesign-desktop)
  set(kv_desktop_dir "${PROJECT_SOURCE_DIR}/host/desktop")
  install(TARGETS kvdesign-desktop RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
  install(FILES "${kv_desktop_dir}/kvdesign.desktop" DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
  install(FILES "${kv_desktop_dir}/kvdesign.png" DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/128x128/apps")
endif()
foreach(storey IN LISTS KV_STOREYS)
  if(EXISTS "${PROJECT_SOURCE_DIR}/${storey}")
    install(
      DIRECTORY "${PROJECT_SOURCE_DIR}/${storey}/"
      DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/kvdesign/${storey}"
      FILES_MATCHING
      PATTERN "*.h"
      PATTERN "*.inc")
  endif()
endforeach()

install(
  EXPORT KvDesignTargets
  NAMESPACE KvDesign::
  DESTINATION "${kv_package_dir}")
configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/KvDesignConfig.cmake.in"
                              "${PROJECT_BINARY_DIR}/KvDesignConfig.cmake" INSTALL_DESTINATION "${kv_package_dir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/KvDesignConfigVersion.cmake" COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/KvDesignConfig.cmake" "${PROJECT_BINARY_DIR}/KvDesignConfigVersion.cmake"
        DESTINATION "${kv_package_dir}")
