# What every target of this project is compiled with.

include(GNUInstallDirs)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES AND PROJECT_IS_TOP_LEVEL)
  set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "Type of the build" FORCE)
endif()

find_program(KVDESIGN_CCACHE ccache DOC "Compiler cache, used when found")
mark_as_advanced(KVDESIGN_CCACHE)
if(KVDESIGN_CCACHE AND NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${KVDESIGN_CCACHE}")
endif()

# kv_flags(<target>): the warnings, as errors unless KVDESIGN_WERROR is off.
function(kv_flags target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
  if(KVDESIGN_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()
