# What is installed for hosts: two libraries with what a program needs to find and to compile against
# them. The program itself and the tests use the rooms directly.

include(CMakePackageConfigHelpers)
set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/Brisel)

# brisel_library(NAME COMPONENT HEADER ROOMS room...): the shared library brisel-NAME of some rooms, as
# Brisel::COMPONENT. HEADER is the one that a host includes; it and all that it needs are public.
function(brisel_library name component)
  cmake_parse_arguments(LIBRARY "" "HEADER" "ROOMS" ${ARGN})
  set(target brisel_${name}_library)
  add_library(${target} SHARED)
  add_library(Brisel::${component} ALIAS ${target})
  foreach(room IN LISTS LIBRARY_ROOMS)
    get_target_property(type brisel_${room} TYPE)
    if(type STREQUAL STATIC_LIBRARY)
      target_sources(${target} PRIVATE $<TARGET_OBJECTS:brisel_${room}>)
    endif()
    get_target_property(external brisel_${room} BRISEL_EXTERNAL)
    target_link_libraries(${target} PRIVATE ${external})
  endforeach()
  target_link_libraries(${target} PRIVATE ${CMAKE_DL_LIBS})
  target_compile_features(${target} INTERFACE cxx_std_20)
  target_include_directories(${target} INTERFACE $<BUILD_INTERFACE:${CMAKE_BINARY_DIR}/include>
                                                 $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  set(exports ${CMAKE_SOURCE_DIR}/cmake/exports.map)
  target_link_options(${target} PRIVATE LINKER:--version-script=${exports}
                                        $<$<NOT:$<BOOL:${BRISEL_SANITIZE}>>:LINKER:-z,defs>)
  set_target_properties(
    ${target}
    PROPERTIES EXPORT_NAME ${component}
               OUTPUT_NAME brisel-${name}
               LINKER_LANGUAGE CXX
               LINK_DEPENDS ${exports}
               LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib
               INSTALL_RPATH "$ORIGIN"
               VERSION ${PROJECT_VERSION}
               # Before 1.0 every minor version may change what hosts were compiled against.
               SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})

  file(GLOB_RECURSE headers CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/*.h)
  set(script ${CMAKE_SOURCE_DIR}/cmake/PublicHeaders.cmake)
  set(stamp ${CMAKE_BINARY_DIR}/include/${name}.stamp)
  add_custom_command(
    OUTPUT ${stamp}
    COMMAND ${CMAKE_COMMAND} -DSOURCE=${CMAKE_SOURCE_DIR}/src -DHEADER=${LIBRARY_HEADER}
            -DOUTPUT=${CMAKE_BINARY_DIR}/include/brisel -DSTAMP=${stamp} -P ${script}
    DEPENDS ${headers} ${script}
    VERBATIM)
  add_custom_target(brisel_${name}_headers ALL DEPENDS ${stamp})
  add_dependencies(${target} brisel_${name}_headers)

  install(TARGETS ${target} EXPORT Brisel${component})
  install(
    EXPORT Brisel${component}
    NAMESPACE Brisel::
    FILE Brisel${component}.cmake
    DESTINATION ${package_folder})
endfunction()

brisel_library(
  core Core
  HEADER component/Core.h
  ROOMS platform store layout canvas controls repository editors editor interchange tools component)
if(BRISEL_QT)
  brisel_library(widgets Widgets HEADER qt/Widgets.h ROOMS qt)
  target_link_libraries(brisel_widgets_library PUBLIC brisel_core_library Qt6::Widgets)
endif()

install(DIRECTORY ${CMAKE_BINARY_DIR}/include/brisel DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
configure_package_config_file(cmake/BriselConfig.cmake.in BriselConfig.cmake
                              INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(BriselConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/BriselConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/BriselConfigVersion.cmake DESTINATION ${package_folder})

# The folders of a prefix that may be moved; absolute ones stay as they are.
file(RELATIVE_PATH up_from_pkgconfig /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(cmake/brisel-core.pc.in brisel-core.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/brisel-core.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
