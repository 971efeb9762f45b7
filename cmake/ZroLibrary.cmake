# The library that users link: the objects of all rooms as libzrocommon.so and libzrocommon.a.
#
# Objects enter by $<TARGET_OBJECTS:...>, never by linking: an installed static library would
# otherwise ask its users for every room by name.

include(CheckLinkerFlag)
check_linker_flag(CXX "LINKER:-z,pack-relative-relocs" ZRO_HAS_PACKED_RELOCATIONS)

# zro_library(TARGET target TYPE SHARED|STATIC EXPORT_NAME name)
function(zro_library)
  cmake_parse_arguments(LIB "" "TARGET;TYPE;EXPORT_NAME" "" ${ARGN})
  get_property(_rooms GLOBAL PROPERTY ZRO_ROOMS)
  get_property(_headers GLOBAL PROPERTY ZRO_PUBLIC_HEADERS)
  set(_rows ${_headers})
  list(FILTER _headers EXCLUDE REGEX "\\.inc$")
  list(FILTER _rows INCLUDE REGEX "\\.inc$")

  add_library(${LIB_TARGET} ${LIB_TYPE})
  foreach(_room IN LISTS _rooms)
    target_sources(${LIB_TARGET} PRIVATE $<TARGET_OBJECTS:zro_${_room}>)
  endforeach()
  # Row files are installed beside the headers that include them; alone they say nothing.
  target_sources(${LIB_TARGET} PUBLIC
    FILE_SET HEADERS BASE_DIRS "${PROJECT_SOURCE_DIR}"
      FILES ${_headers} "${PROJECT_SOURCE_DIR}/zro/ZroCommon.h"
    FILE_SET rows TYPE HEADERS BASE_DIRS "${PROJECT_SOURCE_DIR}" FILES ${_rows})
  target_compile_features(${LIB_TARGET} PUBLIC cxx_std_20)
  target_link_libraries(${LIB_TARGET} PUBLIC ICU::i18n ICU::uc PRIVATE ZLIB::ZLIB
    Threads::Threads ${CMAKE_DL_LIBS})
  set_target_properties(${LIB_TARGET} PROPERTIES
    LINKER_LANGUAGE CXX OUTPUT_NAME zrocommon EXPORT_NAME ${LIB_EXPORT_NAME}
    VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}
    VERIFY_INTERFACE_HEADER_SETS ON INTERFACE_HEADER_SETS_TO_VERIFY HEADERS)
  if(LIB_TYPE STREQUAL "SHARED")
    target_link_libraries(${LIB_TARGET} PRIVATE zro_flags)
    if(NOT ZRO_SANITIZE)
      set(_map "${PROJECT_SOURCE_DIR}/cmake/zrocommon.map")
      set(_objects "${PROJECT_SOURCE_DIR}/cmake/zrocommon.objects")
      # What is our own is bound when we link: nobody replaces it, and virtual functions and type
      # information would otherwise cost a search by name each when the library is loaded. Code and
      # constants in one mapping save two more; addresses that only move with the library take an
      # eighth of the room.
      target_link_options(${LIB_TARGET} PRIVATE -Wl,--no-undefined -Wl,--as-needed
        "LINKER:--version-script=${_map}" "LINKER:--dynamic-list=${_objects}"
        "LINKER:-z,noseparate-code"
        $<$<BOOL:${ZRO_HAS_PACKED_RELOCATIONS}>:LINKER:-z,pack-relative-relocs>)
      set_property(TARGET ${LIB_TARGET} APPEND PROPERTY LINK_DEPENDS "${_map}" "${_objects}")
    endif()
  endif()
  add_library(ZroCommon::${LIB_EXPORT_NAME} ALIAS ${LIB_TARGET})
endfunction()

if(NOT ZRO_BUILD_SHARED AND NOT ZRO_BUILD_STATIC)
  message(FATAL_ERROR "ZRO_BUILD_SHARED and ZRO_BUILD_STATIC are both off: nothing to build")
endif()
if(ZRO_BUILD_STATIC)
  zro_library(TARGET zrocommon_static TYPE STATIC EXPORT_NAME static)
  set(_primary zrocommon_static)
endif()
if(ZRO_BUILD_SHARED)
  zro_library(TARGET zrocommon TYPE SHARED EXPORT_NAME shared)
  set(_primary zrocommon)
endif()
add_library(ZroCommon::ZroCommon ALIAS ${_primary})
