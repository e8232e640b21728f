# The tests of a Windows build, run under Wine without a display: tests/<folder>/*_test.cpp of the folders of
# KVDESIGN_WINDOWS_TESTS make the programs <folder>_tests.exe, tests/com/*_test.py run with Python and read
# KvDesSvr.dll, those that start programs for Windows by tools/wine.sh. All share one Wine folder, <build>/wine, which
# the test wine/start makes and wine/stop closes. Where Wine is missing, or its 32-bit part for a 32-bit build, what
# starts no program for Windows is run alone.

set(KVDESIGN_WINDOWS_TESTS "com;frame;records;editor;items;server;window"
    CACHE STRING "Folders of tests/ to build for Windows, all or some")
set(KVDESIGN_GOOGLETEST /usr/src/googletest CACHE PATH "Sources of GoogleTest (Debian: libgtest-dev, libgmock-dev)")
option(KVDESIGN_REPRODUCE "Make KvDesSvr.dll whole a second time and compare (com/reproduce_test)" OFF)
find_program(KVDESIGN_WINE wine)
mark_as_advanced(KVDESIGN_GOOGLETEST KVDESIGN_WINE)
set(kv_runs FALSE)
if(CMAKE_HOST_WIN32)
  set(kv_runs TRUE)
elseif(KVDESIGN_WINE)
  if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    set(kv_wine_part "x86_64-unix")
  else()
    set(kv_wine_part "i386-unix")
  endif()
  file(GLOB kv_wine_parts /usr/lib/*/wine/${kv_wine_part} /usr/lib*/wine/${kv_wine_part}
       /opt/wine*/lib*/wine/${kv_wine_part})
  if(kv_wine_parts)
    set(kv_runs TRUE)
  endif()
endif()
if(NOT kv_runs)
  message(STATUS "Programs for Windows: built and not run, Wine is not there or lacks this width")
endif()

set(kv_tests_dir "${PROJECT_BINARY_DIR}/tests")
set(kv_wine_folder "${PROJECT_BINARY_DIR}/wine")
file(MAKE_DIRECTORY "${kv_tests_dir}")
set(kv_run "${PROJECT_SOURCE_DIR}/tools/wine.sh" run "${kv_wine_folder}")
# The same for a program of tests, of which a last line tells that its exit code was 0.
set(kv_tested sh -c [["$@" && echo "exit code 0"]] run ${kv_run})
# A path of this machine as a program under Wine sees it.
set(kv_drive Z:)
if(CMAKE_HOST_WIN32)
  set(kv_drive "")
  set(kv_run "")
  set(kv_tested "")
endif()
# What a program of tests, the system or Wine say that is no success, whatever the exit code.
set(kv_faults "\\[  FAILED  \\]" "PASSED  . 0 tests" "wine: Unhandled" "wine: Call from" "Unhandled exception"
    "terminate called" "Assertion failed")

if(kv_runs AND NOT CMAKE_HOST_WIN32)
  add_test(NAME wine/start COMMAND "${PROJECT_SOURCE_DIR}/tools/wine.sh" start "${kv_wine_folder}")
  add_test(NAME wine/stop COMMAND "${PROJECT_SOURCE_DIR}/tools/wine.sh" stop "${kv_wine_folder}")
  set_tests_properties(wine/start PROPERTIES FIXTURES_SETUP wine TIMEOUT 300)
  set_tests_properties(wine/stop PROPERTIES FIXTURES_CLEANUP wine TIMEOUT 150)
endif()

set(BUILD_GMOCK ON CACHE INTERNAL "")
set(INSTALL_GTEST OFF CACHE INTERNAL "")
add_subdirectory("${KVDESIGN_GOOGLETEST}" "${PROJECT_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL SYSTEM)

file(GLOB kv_support_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/tests/support/*.cpp")
add_library(kvdesign_test_support STATIC ${kv_support_sources})
target_compile_definitions(kvdesign_test_support PUBLIC KV_SOURCE_DIR="${kv_drive}${PROJECT_SOURCE_DIR}")
target_link_libraries(kvdesign_test_support PUBLIC kvdesign_core gmock gtest)
kv_flags(kvdesign_test_support)

foreach(name IN LISTS KVDESIGN_WINDOWS_TESTS)
  file(GLOB_RECURSE tests CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/tests/${name}/*_test.cpp")
  if(NOT tests)
    continue()
  endif()
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/tests/${name}/*.cpp")
  set(program ${name}_tests)
  add_executable(${program} ${sources})
  set_target_properties(${program} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${kv_tests_dir}")
  target_include_directories(${program} PRIVATE "${PROJECT_SOURCE_DIR}")
  target_link_libraries(${program} PRIVATE kvdesign_test_support gtest_main)
  # Lines of assertions by the hundred: what is tested is optimised, the tests need not be. The assembler's
  # short form of an object file holds too few sections for them.
  # Those of the records and of the editor make sections by the ten thousand, which takes the linker minutes.
  if(name MATCHES "^(records|editor)$")
    target_compile_options(${program} PRIVATE -O1 -Wa,-mbig-obj)
  else()
    target_compile_options(${program} PRIVATE -O0 -Wa,-mbig-obj)
  endif()
  kv_flags(${program})
  # Some tests build objects thousands of levels deep; the stack they find elsewhere. The component is tested with
  # that of an ordinary host.
  if(NOT name STREQUAL "com")
    target_link_options(${program} PRIVATE -Wl,--stack,8388608)
  endif()
  if(name STREQUAL "com" AND TARGET KvDesSvr)
    add_dependencies(${program} KvDesSvr kvdesign_idl)
    target_compile_definitions(${program} PRIVATE KV_DLL="${kv_drive}$<TARGET_FILE:KvDesSvr>")
    target_sources(${program} PRIVATE $<TARGET_OBJECTS:kvdesign_com_made>)
    target_link_libraries(${program} PRIVATE kvdesign_com)
  endif()
  if(kv_runs)
    # A process a program, for under Wine each takes longer to start than most tests to run; the long ones in parts
    # that go side by side.
    set(parts 1)
    if(name MATCHES "^(items|server)$")
      set(parts 2)
    endif()
    foreach(part RANGE 1 ${parts})
      math(EXPR index "${part} - 1")
      set(test ${name})
      if(parts GREATER 1)
        set(test ${name}/${part})
      endif()
      add_test(
        NAME ${test}
        COMMAND ${kv_tested} $<TARGET_FILE:${program}> --gtest_brief=1
        WORKING_DIRECTORY "${kv_tests_dir}")
      # Under Wine the exit code of a crash can be 0, and a crash at the very end comes behind the summary: both count,
      # and at least one test has run. The focus and the keyboard are one for all: tests of the component run one
      # after the other.
      set_tests_properties(
        ${test}
        PROPERTIES TIMEOUT 600 FIXTURES_REQUIRED wine FAIL_REGULAR_EXPRESSION "${kv_faults}" ENVIRONMENT
                   "GTEST_TOTAL_SHARDS=${parts};GTEST_SHARD_INDEX=${index}")
      if(NOT CMAKE_HOST_WIN32)
        set_tests_properties(${test} PROPERTIES PASS_REGULAR_EXPRESSION "PASSED  . [1-9].*exit code 0")
      endif()
      if(name STREQUAL "com")
        set_tests_properties(${test} PROPERTIES RESOURCE_LOCK screen)
      endif()
    endforeach()
  endif()
endforeach()

if(TARGET KvDesSvr AND "com" IN_LIST KVDESIGN_WINDOWS_TESTS)
  # The example host knows the component by its type library alone.
  file(GLOB kv_example_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/examples/windows/*.cpp")
  if(kv_example_sources)
    add_executable(windows_example ${kv_example_sources})
    add_dependencies(windows_example kvdesign_idl KvDesSvr)
    set_target_properties(windows_example PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${kv_tests_dir}")
    target_compile_definitions(windows_example PRIVATE UNICODE _UNICODE)
    target_include_directories(windows_example SYSTEM PRIVATE "${kv_com_out}")
    target_link_libraries(windows_example PRIVATE ole32 oleaut32 uuid)
    kv_flags(windows_example)
  endif()

  file(GLOB kv_scripts CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/tests/com/*_test.py")
  set(kv_reproduce 0)
  if(KVDESIGN_REPRODUCE)
    set(kv_reproduce 1)
  endif()
  set(kv_script_environment
      "KV_REPRODUCE=${kv_reproduce}"
      "KV_SOURCE_DIR=${PROJECT_SOURCE_DIR}"
      "KV_BUILD_DIR=${PROJECT_BINARY_DIR}"
      "KV_DLL=$<TARGET_FILE:KvDesSvr>"
      "KV_BITS=${kv_bits}"
      "PYTHONDONTWRITEBYTECODE=1"
      "PYTHONUTF8=1")
  if(kv_runs)
    list(APPEND kv_script_environment "KV_WINE=${PROJECT_SOURCE_DIR}/tools/wine.sh" "KV_WINE_FOLDER=${kv_wine_folder}")
  endif()
  foreach(script IN LISTS kv_scripts)
    cmake_path(GET script STEM LAST_ONLY name)
    add_test(
      NAME com/${name}
      COMMAND Python3::Interpreter "${script}"
      WORKING_DIRECTORY "${kv_tests_dir}")
    set_tests_properties(
      com/${name}
      PROPERTIES TIMEOUT 300 SKIP_RETURN_CODE 77 FIXTURES_REQUIRED wine RESOURCE_LOCK screen
                 ENVIRONMENT "${kv_script_environment}")
    # It starts no program for Windows, and compiles all.
    if(name STREQUAL "reproduce_test")
      set_tests_properties(com/${name} PROPERTIES TIMEOUT 3600 FIXTURES_REQUIRED "" RESOURCE_LOCK "")
    endif()
  endforeach()
endif()
