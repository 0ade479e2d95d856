include(GNUInstallDirs)

set_target_properties(vm20core PROPERTIES EXPORT_NAME core)
set_target_properties(vm20sql PROPERTIES EXPORT_NAME sql)
set_target_properties(vm20widgets PROPERTIES EXPORT_NAME widgets)
include(CMakePackageConfigHelpers)

install(TARGETS vm20core vm20sql vm20widgets EXPORT vm20Targets
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
foreach(dir support model query sqlparse providers ui designer dialogs)
  if(EXISTS ${PROJECT_SOURCE_DIR}/src/${dir})
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/src/${dir}
      DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/vm20 FILES_MATCHING PATTERN "*.h")
  endif()
endforeach()
install(EXPORT vm20Targets NAMESPACE vm20:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/vm20)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/vm20Config.cmake.in
  ${PROJECT_BINARY_DIR}/vm20Config.cmake INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/vm20)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/vm20ConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/vm20Config.cmake ${PROJECT_BINARY_DIR}/vm20ConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/vm20)
