# The core: one object library a storey, all of them gathered in the static library kvdesign_core.
#
# A storey is compiled against a folder of its own in the build tree, storeys/<storey>, which holds
# links to just those storeys that it may include: an include upwards finds no file. What the
# compiler finds by itself (third-party and platform headers) is refused by StoreyCheck.cmake, on
# which every object of the storey waits.

include(Storeys)

# kv_stage_storey(<storey> <variable>): makes the include folder of a storey, gives its path.
function(kv_stage_storey storey variable)
  set(stage "${PROJECT_BINARY_DIR}/storeys/${storey}")
  file(REMOVE_RECURSE "${stage}")
  kv_storeys_for(${storey} allowed)
  foreach(other IN LISTS allowed)
    cmake_path(GET other PARENT_PATH parent)
    file(MAKE_DIRECTORY "${stage}/${parent}")
    file(CREATE_LINK "${PROJECT_SOURCE_DIR}/${other}" "${stage}/${other}" SYMBOLIC)
  endforeach()
  set(${variable} "${stage}" PARENT_SCOPE)
endfunction()

# kv_add_storey(<storey> <variable>): the object library of a storey; appends its objects to
# <variable>. A storey that has no files yet adds nothing.
function(kv_add_storey storey variable)
  string(REPLACE "/" "_" name "${storey}")
  file(GLOB sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/${storey}/*.cpp")
  file(GLOB headers CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/${storey}/*.h"
       "${PROJECT_SOURCE_DIR}/${storey}/*.inc")
  if(NOT sources AND NOT headers)
    return()
  endif()
  kv_stage_storey(${storey} stage)

  set(stamp "${PROJECT_BINARY_DIR}/storeys/${name}.checked")
  add_custom_command(
    OUTPUT "${stamp}"
    COMMAND "${CMAKE_COMMAND}" "-DROOT=${PROJECT_SOURCE_DIR}" "-DSTOREY=${storey}" -P
            "${PROJECT_SOURCE_DIR}/cmake/StoreyCheck.cmake"
    COMMAND "${CMAKE_COMMAND}" -E touch "${stamp}"
    DEPENDS ${sources} ${headers} "${PROJECT_SOURCE_DIR}/cmake/StoreyCheck.cmake"
            "${PROJECT_SOURCE_DIR}/cmake/Storeys.cmake"
    COMMENT "Checking the includes of ${storey}"
    VERBATIM)
  add_custom_target(kvdesign_${name}_check DEPENDS "${stamp}")

  # A source that includes every header once, so that a storey of headers alone is compiled too.
  set(each_header "${PROJECT_BINARY_DIR}/storeys/${name}_headers.cpp")
  set(text "")
  foreach(header IN LISTS headers)
    cmake_path(GET header EXTENSION LAST_ONLY extension)
    if(extension STREQUAL ".h")
      cmake_path(GET header FILENAME file)
      string(APPEND text "#include \"${storey}/${file}\"\n")
    endif()
  endforeach()
  file(GENERATE OUTPUT "${each_header}" CONTENT "${text}")

  add_library(kvdesign_${name} OBJECT ${sources} ${headers} "${each_header}")
  add_dependencies(kvdesign_${name} kvdesign_${name}_check)
  target_include_directories(kvdesign_${name} PRIVATE "${stage}")
  kv_flags(kvdesign_${name})
  if(KVDESIGN_COVERAGE)
    # A header is one file, by whichever folder of links it was found.
    target_compile_options(
      kvdesign_${name} PRIVATE -fprofile-instr-generate -fcoverage-mapping
                               "-fcoverage-prefix-map=${stage}=${PROJECT_SOURCE_DIR}")
  endif()
  set(${variable} ${${variable}} $<TARGET_OBJECTS:kvdesign_${name}> PARENT_SCOPE)
endfunction()

set(kv_objects)
foreach(storey IN LISTS KV_STOREYS)
  kv_add_storey(${storey} kv_objects)
endforeach()
if(NOT kv_objects)
  message(FATAL_ERROR "No storey of the core has a file; there is nothing to build")
endif()

add_library(kvdesign_core STATIC ${kv_objects})
add_library(KvDesign::core ALIAS kvdesign_core)
set_target_properties(kvdesign_core PROPERTIES OUTPUT_NAME kvdesign EXPORT_NAME core LINKER_LANGUAGE CXX)
target_compile_features(kvdesign_core PUBLIC cxx_std_20)
target_include_directories(
  kvdesign_core INTERFACE "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>"
                          "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/kvdesign>")
if(KVDESIGN_COVERAGE)
  target_link_options(kvdesign_core INTERFACE -fprofile-instr-generate)
endif()
