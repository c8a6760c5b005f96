# What `cmake --install` gives: headers under include/oxSuperAPI/, the library, the fake host and the package files.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/oxSuperAPI)

foreach(folder host foundation session model log calls)
  install(DIRECTORY ${folder}/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/oxSuperAPI/${folder} COMPONENT core
          FILES_MATCHING PATTERN "*.h"
          # the library's own, of no use to a host
          PATTERN "uBeamHostAccess.h" EXCLUDE PATTERN "uBeamSaveStatement.h" EXCLUDE)
endforeach()
install(FILES ${OXSUPERAPI_GENERATED_DIR}/oxSuperAPI/generated/uBeamHosts.h
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/oxSuperAPI/generated COMPONENT core)
install(TARGETS oxSuperAPI EXPORT oxSuperAPI-core COMPONENT core)
install(EXPORT oxSuperAPI-core NAMESPACE oxSuperAPI:: DESTINATION ${package_dir} COMPONENT core)

if(OXSUPERAPI_TESTING)
  install(DIRECTORY testing/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/oxSuperAPI/testing COMPONENT testing
          FILES_MATCHING PATTERN "*.h")
  set_target_properties(oxsuperapi_testing PROPERTIES EXPORT_NAME testing OUTPUT_NAME oxSuperAPI-testing)
  install(TARGETS oxsuperapi_testing EXPORT oxSuperAPI-testing COMPONENT testing)
  install(EXPORT oxSuperAPI-testing NAMESPACE oxSuperAPI:: DESTINATION ${package_dir} COMPONENT testing)
endif()

if(OXSUPERAPI_TOOL)
  install(TARGETS oxsuper COMPONENT tool)
endif()
if(OXSUPERAPI_SANDBOX)
  install(TARGETS beam-sandbox COMPONENT sandbox)
endif()

configure_package_config_file(cmake/oxSuperAPIConfig.cmake.in ${CMAKE_CURRENT_BINARY_DIR}/oxSuperAPIConfig.cmake
                              INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/oxSuperAPIConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/oxSuperAPIConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/oxSuperAPIConfigVersion.cmake
        DESTINATION ${package_dir} COMPONENT core)
