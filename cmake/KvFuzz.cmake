# fuzz/[a-z]*.cpp: a libFuzzer program fuzz_<target> each, all of them with the target `fuzzers`; and fuzz_corpus, which
# makes the corpus in the tree: fuzz_corpus tests/golden fuzz. clang alone has libFuzzer. What is fuzzed counts the edges
# that it passes; the sanitizers come from CMAKE_CXX_FLAGS.

if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  message(FATAL_ERROR "KVDESIGN_FUZZ needs clang; this is ${CMAKE_CXX_COMPILER_ID}")
endif()

foreach(storey IN LISTS KV_STOREYS)
  string(REPLACE "/" "_" name "${storey}")
  if(TARGET kvdesign_${name})
    target_compile_options(kvdesign_${name} PRIVATE -fsanitize=fuzzer-no-link)
  endif()
endforeach()

find_package(SQLite3 REQUIRED)
find_package(nlohmann_json REQUIRED)

# What the targets need of host/: neither the command line nor the demonstration.
set(kv_fuzz_host)
foreach(name IN ITEMS HostPlatform KvRegSvr ObjectJson ObjectWindow RpcChannel RpcHost RpcMessage RpcPlatform Text)
  list(APPEND kv_fuzz_host "${PROJECT_SOURCE_DIR}/host/${name}.cpp")
endforeach()
add_library(kvdesign_fuzz STATIC EXCLUDE_FROM_ALL ${kv_fuzz_host} "${PROJECT_SOURCE_DIR}/fuzz/Fuzz.cpp")
target_include_directories(kvdesign_fuzz PUBLIC "${PROJECT_SOURCE_DIR}")
target_link_libraries(kvdesign_fuzz PUBLIC kvdesign_core SQLite::SQLite3 nlohmann_json::nlohmann_json)
target_compile_options(kvdesign_fuzz PRIVATE -fsanitize=fuzzer-no-link)
kv_flags(kvdesign_fuzz)

add_custom_target(fuzzers)
file(GLOB kv_fuzz_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/fuzz/[a-z]*.cpp")
foreach(source IN LISTS kv_fuzz_sources)
  cmake_path(GET source STEM name)
  add_executable(fuzz_${name} EXCLUDE_FROM_ALL "${source}")
  set_target_properties(fuzz_${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/fuzz")
  target_link_libraries(fuzz_${name} PRIVATE kvdesign_fuzz)
  kv_flags(fuzz_${name})
  target_compile_options(fuzz_${name} PRIVATE -fsanitize=fuzzer-no-link)
  if(NOT name STREQUAL "corpus")
    target_link_options(fuzz_${name} PRIVATE -fsanitize=fuzzer)
    add_dependencies(fuzzers fuzz_${name})
  endif()
endforeach()
