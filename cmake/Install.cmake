# What `cmake --install` lays down: the shared library, the public headers, the command line where it was built, and
# the two ways to find them, find_package(kq_pdt) with the target kq_pdt::kq_pdt, and pkg-config.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/kq_pdt)

install(TARGETS kq_pdt EXPORT kq_pdtTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
if(TARGET kqcfg)
  file(RELATIVE_PATH from_bin_to_lib ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
  set_target_properties(kqcfg PROPERTIES INSTALL_RPATH "$ORIGIN/${from_bin_to_lib}")
  install(TARGETS kqcfg DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
foreach(header IN LISTS KQ_PUBLIC_HEADERS)
  get_filename_component(folder ${header} DIRECTORY)
  install(FILES ${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/kq_pdt/${folder})
endforeach()

install(EXPORT kq_pdtTargets NAMESPACE kq_pdt:: DESTINATION ${package_dir})
configure_package_config_file(cmake/kq_pdtConfig.cmake.in ${CMAKE_BINARY_DIR}/kq_pdtConfig.cmake
                              INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${CMAKE_BINARY_DIR}/kq_pdtConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/kq_pdtConfig.cmake ${CMAKE_BINARY_DIR}/kq_pdtConfigVersion.cmake
        DESTINATION ${package_dir})

# All paths in the file are relative to it, so the tree may be moved as a whole.
file(RELATIVE_PATH KQ_PC_INCLUDEDIR ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_FULL_INCLUDEDIR})
configure_file(cmake/kq_pdt.pc.in ${CMAKE_BINARY_DIR}/kq_pdt.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/kq_pdt.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
