# com/: the in-process component KvDesSvr.dll, on Windows (cross-built: the presets mingw and mingw32).
#
# com/KvDesSvr.idl makes, in <build>/com: KvDesSvr.tlb (resource TYPELIB 1), KvDesSvr_h.h and KvDesSvr_i.c.
# resources/windows makes the rest of the resources from the pictures and tables of resources/. The same sources
# give the same bytes: nothing that is linked holds a time or a path.

find_package(Python3 REQUIRED COMPONENTS Interpreter)
enable_language(C)
enable_language(RC)

set(kv_com_dir "${PROJECT_SOURCE_DIR}/com")
set(kv_com_out "${PROJECT_BINARY_DIR}/com")
set(kv_windows_dir "${PROJECT_SOURCE_DIR}/resources/windows")
file(MAKE_DIRECTORY "${kv_com_out}")

file(GLOB kv_com_sources CONFIGURE_DEPENDS "${kv_com_dir}/*.cpp" "${kv_com_dir}/window/*.cpp")
if(NOT kv_com_sources OR NOT EXISTS "${kv_com_dir}/KvDesSvr.idl")
  message(STATUS "Component: left out, com/ holds no sources")
  return()
endif()

find_program(KVDESIGN_WIDL NAMES ${KV_MINGW}-widl widl REQUIRED)
# The type library builds on that of the system, stdole2.tlb, which mingw-w64 lacks and Wine has.
file(GLOB kv_wine_dirs /usr/lib/*/wine/x86_64-windows /usr/lib*/wine/x86_64-windows /opt/wine*/lib*/wine/x86_64-windows)
find_path(KVDESIGN_TYPELIBS stdole2.tlb PATHS ${kv_wine_dirs} NO_CMAKE_FIND_ROOT_PATH REQUIRED)

math(EXPR kv_bits "${CMAKE_SIZEOF_VOID_P} * 8")
set(kv_widl "${KVDESIGN_WIDL}" -m${kv_bits} -I "${kv_com_dir}" -I "${kv_com_dir}/idlstub" -L "${KVDESIGN_TYPELIBS}")
file(GLOB kv_idl_files CONFIGURE_DEPENDS "${kv_com_dir}/*.idl" "${kv_com_dir}/idlstub/*.idl")
add_custom_command(
  OUTPUT "${kv_com_out}/KvDesSvr.tlb" "${kv_com_out}/KvDesSvr_h.h" "${kv_com_out}/KvDesSvr_i.c"
  COMMAND ${kv_widl} -h -o KvDesSvr_h.h "${kv_com_dir}/KvDesSvr.idl"
  COMMAND ${kv_widl} -u -o KvDesSvr_i.c "${kv_com_dir}/KvDesSvr.idl"
  COMMAND ${kv_widl} -t -o KvDesSvr.tlb "${kv_com_dir}/KvDesSvr.idl"
  COMMAND Python3::Interpreter "${kv_windows_dir}/typelib_times.py" KvDesSvr.tlb
  DEPENDS ${kv_idl_files} "${kv_windows_dir}/typelib_times.py"
  WORKING_DIRECTORY "${kv_com_out}"
  COMMENT "Type library of KvDesSvr.dll"
  VERBATIM)
# For whoever includes KvDesSvr_h.h beside the DLL itself: add_dependencies(<target> kvdesign_idl).
add_custom_target(kvdesign_idl DEPENDS "${kv_com_out}/KvDesSvr_h.h")

file(GLOB kv_drawn CONFIGURE_DEPENDS "${kv_windows_dir}/*.xpm" "${PROJECT_SOURCE_DIR}/resources/pictures/*.xpm")
set(kv_made_names findtag.bmp renumtag.bmp maptable.bmp constants.bmp kvdesign.ico wait.cur drag.cur nodrop.cur
                  iid.bin strings.rc version.rc)
list(TRANSFORM kv_made_names PREPEND "${kv_com_out}/" OUTPUT_VARIABLE kv_made)
add_custom_command(
  OUTPUT ${kv_made}
  COMMAND Python3::Interpreter "${kv_windows_dir}/make_resources.py" "${PROJECT_SOURCE_DIR}/resources"
          "${kv_com_dir}/KvDesSvr.idl" "${PROJECT_VERSION}" "${kv_com_out}"
  DEPENDS ${kv_drawn} ${kv_idl_files} "${kv_windows_dir}/make_resources.py" "${PROJECT_SOURCE_DIR}/resources/Messages.h"
          "${PROJECT_SOURCE_DIR}/resources/CommandWords.h"
  COMMENT "Resources of KvDesSvr.dll"
  VERBATIM)
set_source_files_properties("${kv_windows_dir}/KvDesSvr.rc" PROPERTIES OBJECT_DEPENDS
                            "${kv_made};${kv_com_out}/KvDesSvr.tlb;${kv_windows_dir}/KvDesSvr.manifest")

set(kv_com_libraries kvdesign_core ole32 oleaut32 uuid comctl32 comdlg32 gdi32 advapi32 uxtheme)
# The component's own code, once: for the DLL all of it, for a test program what it calls (kvdesign_com).
add_library(kvdesign_com_objects OBJECT ${kv_com_sources})
add_dependencies(kvdesign_com_objects kvdesign_idl)
target_compile_definitions(kvdesign_com_objects PUBLIC UNICODE _UNICODE NOMINMAX)
# What widl writes does not keep to our warnings, so its header is a system's one.
target_include_directories(kvdesign_com_objects SYSTEM PUBLIC "${kv_com_out}")
target_link_libraries(kvdesign_com_objects PUBLIC ${kv_com_libraries})
# The four entry points and the interfaces of the system are no ISO C++; all other warnings are those of the core.
target_compile_options(kvdesign_com_objects PRIVATE -Wall -Wextra -Wconversion -Wshadow -Wdate-time)
if(KVDESIGN_WERROR)
  target_compile_options(kvdesign_com_objects PRIVATE -Werror)
endif()

# The resources and the identifiers, compiled once for the same two.
add_library(kvdesign_com_made OBJECT "${kv_com_out}/KvDesSvr_i.c" "${kv_windows_dir}/KvDesSvr.rc")
add_dependencies(kvdesign_com_made kvdesign_idl)
target_include_directories(kvdesign_com_made PRIVATE "${kv_com_out}" "${kv_windows_dir}")

add_library(kvdesign_com STATIC EXCLUDE_FROM_ALL $<TARGET_OBJECTS:kvdesign_com_objects>)
set_target_properties(kvdesign_com PROPERTIES LINKER_LANGUAGE CXX)
target_compile_definitions(kvdesign_com PUBLIC UNICODE _UNICODE NOMINMAX)
target_include_directories(kvdesign_com SYSTEM PUBLIC "${kv_com_out}")
target_link_libraries(kvdesign_com PUBLIC ${kv_com_libraries})

add_library(KvDesSvr SHARED $<TARGET_OBJECTS:kvdesign_com_objects> $<TARGET_OBJECTS:kvdesign_com_made>
                            "${kv_windows_dir}/KvDesSvr.def")
set_target_properties(KvDesSvr PROPERTIES PREFIX "" LINKER_LANGUAGE CXX RUNTIME_OUTPUT_DIRECTORY
                                                                        "${PROJECT_BINARY_DIR}")
target_link_libraries(KvDesSvr PRIVATE ${kv_com_libraries})
# A fixed base: the linker would else make one of the path of the file.
if(kv_bits EQUAL 64)
  set(kv_base 0x180000000)
else()
  set(kv_base 0x10000000)
endif()
target_link_options(KvDesSvr PRIVATE -s -static-libgcc -static-libstdc++ -Wl,--nxcompat,--dynamicbase
                    -Wl,--no-insert-timestamp,--enable-stdcall-fixup,--image-base,${kv_base})
