# zro_room(NAME USES rooms... HEADERS files... SOURCES files... INTERNAL files...)
#
# One room of the library: an OBJECT library of a few files in one folder. USES is the room's whole
# licence to include; tools/check_layers.py holds it. HEADERS are public and get installed, INTERNAL
# are the private headers of the room.
function(zro_room name)
  cmake_parse_arguments(ROOM "" "" "USES;HEADERS;SOURCES;INTERNAL" ${ARGN})
  if(ROOM_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "zro_room(${name}): unknown arguments ${ROOM_UNPARSED_ARGUMENTS}")
  endif()
  add_library(zro_${name} OBJECT ${ROOM_SOURCES} ${ROOM_HEADERS} ${ROOM_INTERNAL})
  target_link_libraries(zro_${name} PRIVATE zro_flags PUBLIC ICU::i18n ICU::uc)
  target_compile_definitions(zro_${name} PRIVATE ZRO_BUILDING)
  # Nobody replaces our functions (see ZroLibrary.cmake), so they may be inlined; our few bytes of
  # thread-local data have their place in every thread from its start.
  target_compile_options(zro_${name} PRIVATE -fno-semantic-interposition
    -ftls-model=initial-exec)
  if(ZRO_SANITIZE)
    # Under sanitizers the library runs most, and all around it takes longest to compile. What is
    # around it goes without those of ZRO_SANITIZE_LIBRARY.
    target_compile_options(zro_${name} PRIVATE $<$<CONFIG:Debug>:-O1>)
    foreach(_sanitizer IN LISTS ZRO_SANITIZE_LIBRARY)
      target_compile_options(zro_${name} PRIVATE -fsanitize=${_sanitizer})
    endforeach()
  endif()
  set_target_properties(zro_${name} PROPERTIES LINKER_LANGUAGE CXX
    POSITION_INDEPENDENT_CODE ON CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
  file(RELATIVE_PATH _folder "${PROJECT_SOURCE_DIR}" "${CMAKE_CURRENT_SOURCE_DIR}")
  set(_headers ${ROOM_HEADERS})
  list(TRANSFORM _headers PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/")
  set_property(GLOBAL APPEND PROPERTY ZRO_ROOMS ${name})
  set_property(GLOBAL APPEND PROPERTY ZRO_PUBLIC_HEADERS ${_headers})
  set_property(GLOBAL PROPERTY ZRO_ROOM_USES_${name} "${ROOM_USES}")
  string(REPLACE ";" " " _uses "${ROOM_USES}")
  set(_files ${ROOM_HEADERS} ${ROOM_SOURCES} ${ROOM_INTERNAL})
  list(TRANSFORM _files PREPEND "${_folder}/")
  string(REPLACE ";" " " _files "${_files}")
  set_property(GLOBAL APPEND PROPERTY ZRO_ROOM_LINES "${name} | ${_uses} | ${_files}\n")
endfunction()

# The rooms that the given ones rest on, themselves included.
function(zro_room_closure result)
  set(_open ${ARGN})
  set(_closed "")
  while(_open)
    list(POP_FRONT _open _room)
    if(NOT _room IN_LIST _closed)
      list(APPEND _closed ${_room})
      get_property(_uses GLOBAL PROPERTY ZRO_ROOM_USES_${_room})
      list(APPEND _open ${_uses})
    endif()
  endwhile()
  set(${result} ${_closed} PARENT_SCOPE)
endfunction()

# zro_test(NAME ROOMS rooms... SOURCES files... [LABELS labels...])
#
# One GoogleTest executable, NAME_test, linked with the objects of the rooms named and of all they
# rest on, so that internals are in reach.
function(zro_test name)
  cmake_parse_arguments(TEST "" "" "ROOMS;SOURCES;LABELS;LIBRARIES" ${ARGN})
  zro_room_closure(_rooms ${TEST_ROOMS})
  add_executable(${name}_test ${TEST_SOURCES})
  if(CMAKE_INTERPROCEDURAL_OPTIMIZATION AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Tests link the machine code that the fat objects hold as well, in a fraction of the time.
    set_target_properties(${name}_test PROPERTIES INTERPROCEDURAL_OPTIMIZATION OFF)
    target_link_options(${name}_test PRIVATE -fno-lto)
  endif()
  foreach(_room IN LISTS _rooms)
    target_link_libraries(${name}_test PRIVATE zro_${_room})
  endforeach()
  target_link_libraries(${name}_test PRIVATE zro_flags zro_test_support zro_test_main
    Threads::Threads ${CMAKE_DL_LIBS} ${TEST_LIBRARIES})
  if(NOT TEST_LABELS)
    set(TEST_LABELS unit)
  endif()
  gtest_discover_tests(${name}_test DISCOVERY_TIMEOUT 60
    PROPERTIES LABELS "${TEST_LABELS}" TIMEOUT 300)
endfunction()
