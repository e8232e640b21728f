# bench/*.cpp make kvdesign_bench, built on demand: cmake --build <folder> --target kvdesign_bench

file(GLOB kv_bench_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/bench/*.cpp")
if(kv_bench_sources)
  find_package(benchmark REQUIRED)
  add_executable(kvdesign_bench EXCLUDE_FROM_ALL ${kv_bench_sources})
  target_include_directories(kvdesign_bench PRIVATE "${PROJECT_SOURCE_DIR}")
  target_link_libraries(kvdesign_bench PRIVATE kvdesign_core benchmark::benchmark)
  kv_flags(kvdesign_bench)
endif()
