# Install rules: components `shared`, `static`, `development` (headers, CMake package, pkg-config)
# and `tools`.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(_package "${CMAKE_INSTALL_LIBDIR}/cmake/ZroCommon")

# zro_install_targets(COMPONENT targets...): the targets, and the file that imports them.
function(zro_install_targets component)
  string(SUBSTRING "${component}" 0 1 _first)
  string(SUBSTRING "${component}" 1 -1 _rest)
  string(TOUPPER "${_first}" _first)
  set(_export "ZroCommon${_first}${_rest}Targets")
  set(_headers "")
  if(NOT component STREQUAL "tools")
    set(_headers FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" COMPONENT development
      FILE_SET rows DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" COMPONENT development)
  endif()
  install(TARGETS ${ARGN} EXPORT ${_export}
    RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT ${component}
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT ${component}
      NAMELINK_COMPONENT ${component}
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT ${component}
    ${_headers})
  install(EXPORT ${_export} NAMESPACE ZroCommon:: DESTINATION "${_package}"
    COMPONENT ${component})
endfunction()

if(TARGET zrocommon)
  zro_install_targets(shared zrocommon)
endif()
if(TARGET zrocommon_static)
  zro_install_targets(static zrocommon_static)
endif()
if(TARGET zro)
  # The program finds the library it was installed with, wherever the tree is moved.
  file(RELATIVE_PATH _lib "/p/${CMAKE_INSTALL_BINDIR}" "/p/${CMAKE_INSTALL_LIBDIR}")
  set_target_properties(zro PROPERTIES INSTALL_RPATH "$ORIGIN/${_lib}")
  zro_install_targets(tools zro)
endif()

configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/zroConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/package/ZroCommonConfig.cmake" INSTALL_DESTINATION "${_package}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/package/ZroCommonConfigVersion.cmake"
  VERSION ${PROJECT_VERSION} COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/package/ZroCommonConfig.cmake"
  "${PROJECT_BINARY_DIR}/package/ZroCommonConfigVersion.cmake"
  DESTINATION "${_package}" COMPONENT development)

# The way from the .pc file back to the prefix, so that a moved tree still works.
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}" OR IS_ABSOLUTE "${CMAKE_INSTALL_INCLUDEDIR}")
  set(ZRO_PC_PREFIX "${CMAKE_INSTALL_PREFIX}")
  set(ZRO_PC_LIBDIR "${CMAKE_INSTALL_FULL_LIBDIR}")
  set(ZRO_PC_INCLUDEDIR "${CMAKE_INSTALL_FULL_INCLUDEDIR}")
else()
  file(RELATIVE_PATH _up "/p/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/p")
  string(REGEX REPLACE "/$" "" _up "${_up}")
  set(ZRO_PC_PREFIX "\${pcfiledir}/${_up}")
  set(ZRO_PC_LIBDIR "\${prefix}/${CMAKE_INSTALL_LIBDIR}")
  set(ZRO_PC_INCLUDEDIR "\${prefix}/${CMAKE_INSTALL_INCLUDEDIR}")
endif()
configure_file("${PROJECT_SOURCE_DIR}/cmake/zrocommon.pc.in"
  "${PROJECT_BINARY_DIR}/package/zrocommon.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/package/zrocommon.pc"
  DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT development)
install(FILES "${PROJECT_SOURCE_DIR}/LICENSE"
  DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT development)

# ./dev package
set(CPACK_GENERATOR "TGZ;DEB")
set(CPACK_PACKAGE_CONTACT "the ZroCommon developers <zrocommon@example.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_RESOURCE_FILE_LICENSE "${PROJECT_SOURCE_DIR}/LICENSE")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
if(ZRO_WITH_CURL)
  set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "libcurl4")
endif()
set(CPACK_STRIP_FILES ON)
include(CPack)
