# What is installed where, always relative to the prefix. The component Runtime holds the shared libraries,
# Development what hosts are built with, Tools the programs, and Designer the plugin for Qt Designer.
include(GNUInstallDirs)
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME Tools)
include(CMakePackageConfigHelpers)

set(DECLARATIONHANDLER_API_VERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
# A folder of their own, since Common/ and common/ are no names for a folder that all share.
set(versioned_name DeclarationHandler${DECLARATIONHANDLER_SUFFIX}-${DECLARATIONHANDLER_API_VERSION})
set(headers_folder ${CMAKE_INSTALL_INCLUDEDIR}/${versioned_name})
# find_package(DeclarationHandler) looks into all folders whose names begin like that.
set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/DeclarationHandler${DECLARATIONHANDLER_SUFFIX})
set(pkgconfig_folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
set(qmake_folder ${CMAKE_INSTALL_DATADIR}/${versioned_name})

# Libraries and programs find the libraries wherever the whole is moved to.
file(RELATIVE_PATH to_libraries "/${CMAKE_INSTALL_BINDIR}" "/${CMAKE_INSTALL_LIBDIR}")
set(CMAKE_INSTALL_RPATH "$ORIGIN" "$ORIGIN/${to_libraries}")

# declarationhandler_install_headers(<target>): those that are not internal, in folders as in the target's.
function(declarationhandler_install_headers target)
  get_target_property(sources ${target} SOURCES)
  get_target_property(internal ${target} DECLARATIONHANDLER_INTERNAL_HEADERS)
  get_target_property(source_folder ${target} SOURCE_DIR)
  list(FILTER sources INCLUDE REGEX "\\.h$")
  list(REMOVE_ITEM sources ${internal})
  foreach(header IN LISTS sources)
    get_filename_component(folder ${header} DIRECTORY)
    install(FILES ${source_folder}/${header}
      DESTINATION ${headers_folder}/${folder} COMPONENT Development)
  endforeach()
  target_include_directories(${target} INTERFACE $<INSTALL_INTERFACE:${headers_folder}>)
endfunction()

# declarationhandler_configure(<template> <folder>): a file for hosts that build without CMake. It finds the
# prefix from where it lies.
function(declarationhandler_configure template name folder)
  file(RELATIVE_PATH to_prefix "/${folder}" "/")
  string(REGEX REPLACE "/$" "" to_prefix "${to_prefix}")
  set(qmake_qt "core")
  set(pkgconfig_qt "Qt${DECLARATIONHANDLER_QT}Core")
  if(NOT BUILD_SHARED_LIBS)
    # What shared libraries bring along by themselves.
    string(APPEND qmake_qt " gui widgets")
    string(APPEND pkgconfig_qt " Qt${DECLARATIONHANDLER_QT}Gui Qt${DECLARATIONHANDLER_QT}Widgets")
    set(forms_defines "DECLARATIONFORMS_STATIC")
    set(forms_flags "-DDECLARATIONFORMS_STATIC")
    set(static_libraries "-pthread")
    set(static_defines "DATALAYER_STATIC DECLARATIONHANDLER_STATIC")
    set(static_flags "-DDATALAYER_STATIC -DDECLARATIONHANDLER_STATIC")
  endif()
  configure_file(${PROJECT_SOURCE_DIR}/cmake/${template} ${PROJECT_BINARY_DIR}/install/${name} @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/install/${name} DESTINATION ${folder} COMPONENT Development)
endfunction()

# declarationhandler_install_libraries(): the libraries, and what finds them. Called once they are there.
function(declarationhandler_install_libraries)
  declarationhandler_install_headers(DataLayer)
  declarationhandler_install_headers(DeclarationHandler)
  set(libraries DataLayer DeclarationHandler)
  if(TARGET DeclarationForms)
    declarationhandler_install_headers(DeclarationForms)
    list(APPEND libraries DeclarationForms)
    declarationhandler_configure(DeclarationForms.pc.in DeclarationForms${DECLARATIONHANDLER_SUFFIX}.pc
      ${pkgconfig_folder})
    declarationhandler_configure(declarationforms.pri.in declarationforms.pri ${qmake_folder})
  endif()
  if(TARGET DeclarationInspector)
    declarationhandler_install_headers(DeclarationInspector)
    list(APPEND libraries DeclarationInspector)
    declarationhandler_configure(DeclarationInspector.pc.in DeclarationInspector${DECLARATIONHANDLER_SUFFIX}.pc
      ${pkgconfig_folder})
    declarationhandler_configure(declarationinspector.pri.in declarationinspector.pri ${qmake_folder})
  endif()
  install(TARGETS ${libraries} EXPORT DeclarationHandlerTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Runtime
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Runtime NAMELINK_COMPONENT Development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Development)
  install(EXPORT DeclarationHandlerTargets NAMESPACE DeclarationHandler::
    DESTINATION ${package_folder} COMPONENT Development)

  configure_package_config_file(cmake/DeclarationHandlerConfig.cmake.in
    ${PROJECT_BINARY_DIR}/install/DeclarationHandlerConfig.cmake INSTALL_DESTINATION ${package_folder})
  write_basic_package_version_file(${PROJECT_BINARY_DIR}/install/DeclarationHandlerBasicVersion.cmake
    COMPATIBILITY SameMajorVersion)
  configure_file(cmake/DeclarationHandlerConfigVersion.cmake.in
    ${PROJECT_BINARY_DIR}/install/DeclarationHandlerConfigVersion.cmake @ONLY)
  install(FILES
    ${PROJECT_BINARY_DIR}/install/DeclarationHandlerConfig.cmake
    ${PROJECT_BINARY_DIR}/install/DeclarationHandlerConfigVersion.cmake
    ${PROJECT_BINARY_DIR}/install/DeclarationHandlerBasicVersion.cmake
    DESTINATION ${package_folder} COMPONENT Development)

  declarationhandler_configure(DeclarationHandler.pc.in DeclarationHandler${DECLARATIONHANDLER_SUFFIX}.pc
    ${pkgconfig_folder})
  declarationhandler_configure(declarationhandler.pri.in declarationhandler.pri ${qmake_folder})
endfunction()
