# tests/<name>/*_test.cpp make the program <name>_tests; tests/support/*.cpp is linked into all of
# them. tests/**/*_test.py run with Python; one that exits with 77 is skipped (tests/data without its
# data). examples/embed/*.cpp is built and run. tests/com is the Windows component's: KvWineTests.cmake.

find_package(GTest REQUIRED)
if(TARGET kvdesign_desktop)
  find_package(Qt6 REQUIRED COMPONENTS Test)
endif()
find_package(Python3 REQUIRED COMPONENTS Interpreter)
include(GoogleTest)

set(kv_tests_dir "${PROJECT_BINARY_DIR}/tests")
file(MAKE_DIRECTORY "${kv_tests_dir}")

option(KVDESIGN_UNIT_TESTS "Build the test programs; the scripts run without them, too" ON)

file(GLOB kv_support_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/tests/support/*.cpp")
if(KVDESIGN_UNIT_TESTS AND kv_support_sources)
  add_library(kvdesign_test_support STATIC ${kv_support_sources})
  target_compile_definitions(kvdesign_test_support PUBLIC KV_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
  target_link_libraries(kvdesign_test_support PUBLIC kvdesign_core GTest::gmock GTest::gtest)
  kv_flags(kvdesign_test_support)
endif()

# kv_add_test_program(<folder>): the program of one folder, nothing where it holds no *_test.cpp.
function(kv_add_test_program folder)
  file(GLOB_RECURSE tests CONFIGURE_DEPENDS "${folder}/*_test.cpp")
  if(NOT tests)
    return()
  endif()
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS "${folder}/*.cpp")
  cmake_path(GET folder FILENAME name)
  set(program ${name}_tests)

  add_executable(${program} ${sources})
  set_target_properties(${program} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${kv_tests_dir}")
  target_include_directories(${program} PRIVATE "${PROJECT_SOURCE_DIR}")
  target_compile_definitions(${program} PRIVATE KV_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
  target_link_libraries(${program} PRIVATE kvdesign_core $<TARGET_NAME_IF_EXISTS:kvdesign_test_support>
                                           GTest::gmock GTest::gtest GTest::gtest_main)
  kv_flags(${program})
  # Under the sanitizers it is what is tested that wants to be looked at; the tests' own templates take a compiler
  # twice as long when they are checked for undefined behaviour, too.
  if(CMAKE_CXX_FLAGS MATCHES "-fsanitize")
    target_compile_options(${program} PRIVATE -fno-sanitize=undefined)
  endif()
  if(name STREQUAL "host")
    target_link_libraries(${program} PRIVATE $<TARGET_NAME_IF_EXISTS:kvdesign_host>)
  endif()
  if(name STREQUAL "desktop")
    target_link_libraries(${program} PRIVATE kvdesign_desktop Qt6::Test)
  endif()
  if((name STREQUAL "host" OR name STREQUAL "cli") AND TARGET kvdesign)
    target_compile_definitions(${program} PRIVATE KV_PROGRAM="$<TARGET_FILE:kvdesign>")
    add_dependencies(${program} kvdesign)
  endif()
  # A program under the sanitizers takes longer to start than most tests to run: it runs its tests in one go, in
  # parts that go side by side. Frames are larger there than the ordinary stack allows for deep nesting.
  if(CMAKE_CXX_FLAGS MATCHES "-fsanitize")
    set(parts 1)
    if(name MATCHES "^(items|host|server)$")
      set(parts 4)
    endif()
    foreach(part RANGE 1 ${parts})
      math(EXPR index "${part} - 1")
      add_test(
        NAME ${name}/${part}
        COMMAND sh -c "ulimit -s 65536; exec \"$<TARGET_FILE:${program}>\" --gtest_brief=1"
        WORKING_DIRECTORY "${kv_tests_dir}")
      # What a program that it starts has counted goes when its own count is written, at its end.
      set_tests_properties(
        ${name}/${part}
        PROPERTIES TIMEOUT 900 ENVIRONMENT
                   "GTEST_TOTAL_SHARDS=${parts};GTEST_SHARD_INDEX=${index};LLVM_PROFILE_FILE=${PROJECT_BINARY_DIR}/coverage/${name}-${part}.profraw")
    endforeach()
    return()
  endif()
  gtest_discover_tests(
    ${program}
    TEST_PREFIX "${name}/"
    DISCOVERY_MODE PRE_TEST
    DISCOVERY_TIMEOUT 60
    PROPERTIES TIMEOUT 600)
endfunction()

file(GLOB kv_test_folders LIST_DIRECTORIES true CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/tests/*")
foreach(folder IN LISTS kv_test_folders)
  if(NOT KVDESIGN_UNIT_TESTS OR (folder MATCHES "/desktop$" AND NOT TARGET kvdesign_desktop))
    continue()
  endif()
  if(IS_DIRECTORY "${folder}" AND NOT folder MATCHES "/(support|com)$")
    kv_add_test_program("${folder}")
  endif()
endforeach()

file(GLOB_RECURSE kv_scripts CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/tests/*_test.py")
list(FILTER kv_scripts EXCLUDE REGEX "/tests/com/")
if(CMAKE_CXX_FLAGS MATCHES "-fsanitize")
  # The scripts run with the program that is not slowed down; here those alone that drive much of it in one process.
  list(FILTER kv_scripts INCLUDE REGEX "/tests/(cli/rpc_session|data/[a-z_]+)_test")
endif()
set(kv_script_environment "KV_SOURCE_DIR=${PROJECT_SOURCE_DIR}" "KV_BUILD_DIR=${PROJECT_BINARY_DIR}"
                          "PYTHONDONTWRITEBYTECODE=1" "PYTHONUTF8=1" "LLVM_PROFILE_FILE=/dev/null")
if(TARGET kvdesign)
  list(APPEND kv_script_environment "KVDESIGN=$<TARGET_FILE:kvdesign>")
endif()
foreach(script IN LISTS kv_scripts)
  cmake_path(RELATIVE_PATH script BASE_DIRECTORY "${PROJECT_SOURCE_DIR}/tests" OUTPUT_VARIABLE name)
  cmake_path(REMOVE_EXTENSION name LAST_ONLY)
  add_test(
    NAME ${name}
    COMMAND Python3::Interpreter "${script}"
    WORKING_DIRECTORY "${kv_tests_dir}")
  set_tests_properties(${name} PROPERTIES TIMEOUT 900 SKIP_RETURN_CODE 77 ENVIRONMENT
                                          "${kv_script_environment}")
endforeach()

file(GLOB kv_embed_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/examples/embed/*.cpp")
if(kv_embed_sources)
  add_executable(embed_example ${kv_embed_sources})
  set_target_properties(embed_example PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${kv_tests_dir}")
  target_link_libraries(embed_example PRIVATE KvDesign::core)
  kv_flags(embed_example)
  add_test(
    NAME examples/embed
    COMMAND embed_example
    WORKING_DIRECTORY "${kv_tests_dir}")
  set_tests_properties(
    examples/embed
    PROPERTIES TIMEOUT 60 PASS_REGULAR_EXPRESSION
               "PIPPO=1 .diMember.SaveParm, line 2.\naccepted\n\tBEGIN PARMS\n\t\tPASSWORD= .BIBLIO."
               FAIL_REGULAR_EXPRESSION "runtime error")
endif()
