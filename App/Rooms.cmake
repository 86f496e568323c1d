# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later

# add_room(Name [IN_MODULE] [SOURCES file...] [USES Room...] [LIBRARIES target...]
#          [PRIVATE_LIBRARIES target...])
#
# A folder under App/ is a room: a static library lumora_<name>, whose headers are included as
# "Name/Header.h". Its code sees its own headers and those of the rooms it uses, and what they use;
# an include of any other room does not compile, because each room has an include root of its own.
# Without sources it is headers alone: interfaces and plain types.
#
# IN_MODULE: the room goes into a module, and the rooms it uses are in the program that loads the
# module: it takes their headers alone, lumora_<name>_headers.
function(add_room name)
  cmake_parse_arguments(PARSE_ARGV 1 room "IN_MODULE" "" "SOURCES;USES;LIBRARIES;PRIVATE_LIBRARIES")
  string(TOLOWER ${name} lower)
  list(TRANSFORM room_USES TOLOWER)
  list(TRANSFORM room_USES PREPEND lumora_)
  list(TRANSFORM room_USES APPEND _headers OUTPUT_VARIABLE used_headers)
  if(room_IN_MODULE)
    set(room_USES "")
  endif()

  set(root ${PROJECT_BINARY_DIR}/rooms/${name})
  file(MAKE_DIRECTORY ${root})
  file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${root}/${name} SYMBOLIC)
  add_library(lumora_${lower}_headers INTERFACE)
  target_include_directories(lumora_${lower}_headers INTERFACE ${root})
  target_link_libraries(lumora_${lower}_headers INTERFACE lumora_options ${used_headers})

  if(NOT room_SOURCES)
    add_library(lumora_${lower} INTERFACE)
    target_link_libraries(lumora_${lower} INTERFACE lumora_${lower}_headers ${room_USES})
    return()
  endif()
  add_library(lumora_${lower} STATIC ${room_SOURCES})
  target_link_libraries(lumora_${lower} PUBLIC lumora_${lower}_headers ${room_USES} ${room_LIBRARIES}
                                        PRIVATE ${room_PRIVATE_LIBRARIES})
endfunction()
