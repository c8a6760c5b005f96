# What `cmake --install` gives, by component: core (headers, library, package files), testing (the fake host), reference
# (the reference host and the schemas), editor (its Qt forms), tool and sandbox (programs, manual pages, completion).
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/oxSuperAPI)

# Headers that are of no use outside: the library's own, and those that show a third party's types. The API reference
# leaves them out as well.
file(STRINGS cmake/internal_headers.txt internal_header_names)
foreach(header IN LISTS internal_header_names)
  list(APPEND internal_headers PATTERN ${header} EXCLUDE)
endforeach()

function(oxsuperapi_install_headers folder component)
  install(DIRECTORY ${folder}/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/oxSuperAPI/${folder} COMPONENT ${component}
          FILES_MATCHING PATTERN "*.h" ${internal_headers})
endfunction()

# A library of ours as component `name` of the package: oxSuperAPI::<name>.
function(oxsuperapi_install_library target name component)
  set_target_properties(${target} PROPERTIES EXPORT_NAME ${name})
  install(TARGETS ${target} EXPORT oxSuperAPI-${component} COMPONENT ${component})
  install(EXPORT oxSuperAPI-${component} NAMESPACE oxSuperAPI:: DESTINATION ${package_dir} COMPONENT ${component})
endfunction()

foreach(folder host foundation session model log calls)
  oxsuperapi_install_headers(${folder} core)
endforeach()
install(FILES ${OXSUPERAPI_GENERATED_DIR}/oxSuperAPI/generated/uBeamHosts.h
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/oxSuperAPI/generated COMPONENT core)
oxsuperapi_install_library(oxSuperAPI oxSuperAPI core)

if(OXSUPERAPI_TESTING)
  oxsuperapi_install_headers(testing testing)
  set_target_properties(oxsuperapi_testing PROPERTIES OUTPUT_NAME oxSuperAPI-testing)
  oxsuperapi_install_library(oxsuperapi_testing testing testing)
endif()

if(OXSUPERAPI_REFERENCE)
  oxsuperapi_install_headers(reference reference)
  set_target_properties(oxsuperapi_reference PROPERTIES OUTPUT_NAME oxSuperAPI-reference)
  oxsuperapi_install_library(oxsuperapi_reference reference reference)
  install(DIRECTORY reference/schema DESTINATION ${CMAKE_INSTALL_DATADIR}/oxSuperAPI COMPONENT reference)
endif()

if(OXSUPERAPI_EDITOR)
  oxsuperapi_install_headers(editor editor)
  set_target_properties(oxsuperapi_editor PROPERTIES OUTPUT_NAME oxSuperAPI-editor)
  oxsuperapi_install_library(oxsuperapi_editor editor editor)
endif()

if(OXSUPERAPI_TOOL)
  install(TARGETS oxsuper COMPONENT tool)
  install(FILES docs/man/oxsuper.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tool)
  install(FILES docs/completion/oxsuper DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT tool)
endif()

if(OXSUPERAPI_SANDBOX)
  install(TARGETS beam-sandbox COMPONENT sandbox)
  install(FILES docs/man/beam-sandbox.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT sandbox)
endif()

configure_package_config_file(cmake/oxSuperAPIConfig.cmake.in ${CMAKE_CURRENT_BINARY_DIR}/oxSuperAPIConfig.cmake
                              INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/oxSuperAPIConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/oxSuperAPIConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/oxSuperAPIConfigVersion.cmake
        DESTINATION ${package_dir} COMPONENT core)
file(RELATIVE_PATH pc_to_prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(cmake/oxSuperAPI.pc.in ${CMAKE_CURRENT_BINARY_DIR}/oxSuperAPI.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/oxSuperAPI.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT core)
