# The storeys of the core, lowest first. A storey uses itself and what lies below it; folders on the
# same level never include one another. The build and the check of the includes both read this table.

set(KV_STOREYS
    resources
    frame
    records
    editor
    items/definitions
    items/client
    items/navigation
    items/services
    server
    window)

set(KV_LEVEL_resources 0)
set(KV_LEVEL_frame 1)
set(KV_LEVEL_records 2)
set(KV_LEVEL_editor 3)
set(KV_LEVEL_items/definitions 4)
set(KV_LEVEL_items/client 4)
set(KV_LEVEL_items/navigation 4)
set(KV_LEVEL_items/services 4)
set(KV_LEVEL_server 5)
set(KV_LEVEL_window 6)

# kv_storeys_for(<storey> <variable>): the storeys whose headers <storey> may include.
function(kv_storeys_for storey variable)
  set(allowed)
  foreach(other IN LISTS KV_STOREYS)
    if(other STREQUAL storey OR KV_LEVEL_${other} LESS KV_LEVEL_${storey})
      list(APPEND allowed ${other})
    endif()
  endforeach()
  set(${variable} ${allowed} PARENT_SCOPE)
endfunction()
