# host/: the programs around the core on an ordinary machine. Libraries are used here only.

file(GLOB kv_host_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/host/*.cpp")
file(GLOB kv_host_main CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/host/main.cpp")
list(REMOVE_ITEM kv_host_sources ${kv_host_main})

if(kv_host_sources)
  find_package(SQLite3 REQUIRED)
  find_package(nlohmann_json REQUIRED)
  find_package(CLI11 REQUIRED)
  find_package(Threads REQUIRED)

  add_library(kvdesign_host STATIC ${kv_host_sources})
  target_include_directories(kvdesign_host PUBLIC "${PROJECT_SOURCE_DIR}")
  target_compile_definitions(kvdesign_host PUBLIC KVDESIGN_VERSION="${PROJECT_VERSION}")
  target_link_libraries(kvdesign_host PUBLIC kvdesign_core SQLite::SQLite3 nlohmann_json::nlohmann_json
                                             CLI11::CLI11 Threads::Threads)
  kv_flags(kvdesign_host)
endif()

if(kv_host_main)
  add_executable(kvdesign "${kv_host_main}")
  set_target_properties(kvdesign PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}")
  target_compile_definitions(kvdesign PRIVATE KVDESIGN_VERSION="${PROJECT_VERSION}")
  target_link_libraries(kvdesign PRIVATE kvdesign_core $<TARGET_NAME_IF_EXISTS:kvdesign_host>)
  kv_flags(kvdesign)
endif()
