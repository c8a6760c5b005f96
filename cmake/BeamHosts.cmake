# The six host names of the service. They are configuration of the build: set the cache variables, without "https://"
# and without a slash, for the service that the library is to talk to.
set(OXSUPERAPI_API_HOST_DEV "api.dev.beam.example" CACHE STRING "API host of the integration environment")
set(OXSUPERAPI_API_HOST_QA "api.qa.beam.example" CACHE STRING "API host of the acceptance environment")
set(OXSUPERAPI_API_HOST_PROD "api.beam.example" CACHE STRING "API host of the production environment")
set(OXSUPERAPI_PORTAL_HOST_DEV "portal.dev.beam.example" CACHE STRING "Sign-up portal of the integration environment")
set(OXSUPERAPI_PORTAL_HOST_QA "portal.qa.beam.example" CACHE STRING "Sign-up portal of the acceptance environment")
set(OXSUPERAPI_PORTAL_HOST_PROD "portal.beam.example" CACHE STRING "Sign-up portal of the production environment")

foreach(kind API PORTAL)
  foreach(environment DEV QA PROD)
    set(variable OXSUPERAPI_${kind}_HOST_${environment})
    if(NOT "${${variable}}" MATCHES "^[A-Za-z0-9.-]+(:[0-9]+)?$")
      message(FATAL_ERROR "${variable} is \"${${variable}}\": give a host name alone, such as api.beam.example")
    endif()
  endforeach()
endforeach()

set(OXSUPERAPI_GENERATED_DIR ${CMAKE_CURRENT_BINARY_DIR}/generated)
configure_file(cmake/uBeamHosts.h.in ${OXSUPERAPI_GENERATED_DIR}/oxSuperAPI/generated/uBeamHosts.h @ONLY)
