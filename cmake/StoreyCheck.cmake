# cmake -DROOT=<source root> -DSTOREY=<storey> -P StoreyCheck.cmake
#
# Reads every include of a storey's files. Allowed are the headers of the C++20 standard library and
# the headers of the storey itself and of those below it, written from the root in quotes. A design
# item includes no other design item. Every fault is one line, "file:line: error: ...".

cmake_minimum_required(VERSION 3.25)
include("${CMAKE_CURRENT_LIST_DIR}/Storeys.cmake")

set(standard_headers
    algorithm any array atomic barrier bit bitset cassert cctype cerrno cfenv cfloat charconv chrono
    cinttypes climits clocale cmath codecvt compare complex concepts condition_variable coroutine
    csetjmp csignal cstdarg cstddef cstdint cstdio cstdlib cstring ctime cuchar cwchar cwctype deque
    exception execution filesystem format forward_list fstream functional future initializer_list
    iomanip ios iosfwd iostream istream iterator latch limits list locale map memory memory_resource
    mutex new numbers numeric optional ostream queue random ranges ratio regex scoped_allocator
    semaphore set shared_mutex source_location span sstream stack stdexcept stop_token streambuf
    string string_view strstream syncstream system_error thread tuple type_traits typeindex typeinfo
    unordered_map unordered_set utility valarray variant vector version)

# item_of(<stem> <variable>): the design item that a file of this storey belongs to: the longest part
# of its name, cut where a word ends, whose header states that class. diProfileParms belongs to
# diProfile; diImportProc is an item of its own beside diImport. A file of none belongs to itself.
function(item_of stem variable)
  set(${variable} "${stem}" PARENT_SCOPE)
  set(part "${stem}")
  while(TRUE)
    if(EXISTS "${ROOT}/${STOREY}/${part}.h")
      file(STRINGS "${ROOT}/${STOREY}/${part}.h" statement REGEX "^(class|struct)[ \t]+${part}([^A-Za-z0-9_]|$)")
      if(statement)
        set(${variable} "${part}" PARENT_SCOPE)
        return()
      endif()
    endif()
    # Take the last word off: an upper-case letter or a digit and what follows it.
    if(NOT part MATCHES "^(.+)[A-Z0-9_][^A-Z0-9_]*$")
      return()
    endif()
    set(part "${CMAKE_MATCH_1}")
  endwhile()
endfunction()

# fault_of(<file> <delimiter> <header> <variable>): why <file> may not include <header>, or nothing.
function(fault_of file delimiter header variable)
  set(fault "")
  cmake_path(GET header PARENT_PATH folder)
  if(header MATCHES "(^|[/\\])\\.\\.([/\\]|$)")
    set(fault "\"${header}\" leads out of its folder with '..'; includes are written from the root")
  elseif(delimiter STREQUAL "<")
    if(folder IN_LIST KV_STOREYS)
      set(fault "<${header}> belongs to this project; write it in quotes")
    elseif(NOT header IN_LIST standard_headers)
      set(fault "<${header}> is no header of the C++20 standard library; the core uses no other")
    endif()
  elseif(NOT folder)
    set(fault "\"${header}\" is not written from the root (\"${STOREY}/...\")")
  elseif(NOT folder IN_LIST KV_STOREYS)
    set(fault "\"${header}\" is in no storey of the core")
  elseif(NOT folder IN_LIST allowed)
    if(KV_LEVEL_${folder} EQUAL KV_LEVEL_${STOREY})
      set(fault "\"${header}\" is another folder of design items; they never include one another")
    else()
      set(fault "\"${header}\" lies above ${STOREY}/; a storey uses only what lies below it")
    endif()
  elseif(NOT header MATCHES "\\.(h|inc)$")
    set(fault "\"${header}\" is not a header")
  elseif(folder STREQUAL STOREY AND STOREY MATCHES "^items/")
    cmake_path(GET file STEM LAST_ONLY stem)
    cmake_path(GET header STEM LAST_ONLY other_stem)
    item_of(${stem} item)
    item_of(${other_stem} other_item)
    if(NOT item STREQUAL other_item)
      set(fault "\"${header}\" belongs to the design item ${other_item}; ${item} includes no other item")
    endif()
  endif()
  set(${variable} "${fault}" PARENT_SCOPE)
endfunction()

if(NOT STOREY IN_LIST KV_STOREYS)
  message(FATAL_ERROR "STOREY=${STOREY} is no storey of the core")
endif()
kv_storeys_for(${STOREY} allowed)
file(GLOB files "${ROOT}/${STOREY}/*.h" "${ROOT}/${STOREY}/*.inc" "${ROOT}/${STOREY}/*.cpp")

set(faults 0)
foreach(file IN LISTS files)
  file(READ "${file}" text)
  if(NOT text MATCHES "include")
    continue()
  endif()
  # One list element a line: what a list would take for its own is put out of the way.
  string(REGEX REPLACE "[][;\\\\]" "\t" text "${text}")
  string(REPLACE "\n" ";" text "${text}")
  set(line 0)
  foreach(content IN LISTS text)
    math(EXPR line "${line} + 1")
    if(NOT content MATCHES "include")
      continue()
    endif()
    # A comment before the directive or inside it does not hide it.
    string(REGEX REPLACE "/\\*([^*]|\\*+[^*/])*\\*+/" " " content "${content}")
    if(NOT content MATCHES "^([^\"]*\\*/)?[ \t]*(#|%:)[ \t]*include(_next)?(.*)$")
      continue()
    endif()
    set(rest "${CMAKE_MATCH_4}")
    if(rest MATCHES "^[ \t]*([\"<])([^\">]+)[\">]")
      fault_of("${file}" "${CMAKE_MATCH_1}" "${CMAKE_MATCH_2}" fault)
    elseif(rest MATCHES "^[A-Za-z0-9]")
      continue()
    else()
      set(fault "an include names its header plainly")
    endif()
    if(fault)
      message("${file}:${line}: error: ${fault}")
      math(EXPR faults "${faults} + 1")
    endif()
  endforeach()
endforeach()

if(faults)
  message(FATAL_ERROR "Forbidden includes in ${STOREY}/: ${faults}")
endif()
