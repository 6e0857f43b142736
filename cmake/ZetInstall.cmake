include(CMakePackageConfigHelpers)

install(TARGETS zetw_no_tbb EXPORT zetTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT zetTargets NAMESPACE zet:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/zet)

configure_package_config_file(cmake/zetConfig.cmake.in ${PROJECT_BINARY_DIR}/zetConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/zet)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/zetConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/zetConfig.cmake ${PROJECT_BINARY_DIR}/zetConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/zet)

# Relative, so that the installed folder may be moved.
file(RELATIVE_PATH ZET_PREFIX_FROM_PC /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(cmake/zetw_no_tbb.pc.in ${PROJECT_BINARY_DIR}/zetw_no_tbb.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zetw_no_tbb.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
