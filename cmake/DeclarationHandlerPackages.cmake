# Debian packages: cpack in the folder of the preset "package" makes one for each component.
if(DECLARATIONHANDLER_SUFFIX)
  # Debian's names end in the number of the library, with a hyphen after another digit.
  set(DECLARATIONHANDLER_PACKAGE_Runtime libdeclarationhandler${DECLARATIONHANDLER_SUFFIX}-${PROJECT_VERSION_MAJOR})
else()
  set(DECLARATIONHANDLER_PACKAGE_Runtime libdeclarationhandler${PROJECT_VERSION_MAJOR})
endif()
set(DECLARATIONHANDLER_PACKAGE_Development libdeclarationhandler${DECLARATIONHANDLER_SUFFIX}-dev)
set(DECLARATIONHANDLER_PACKAGE_Tools declarationhandler${DECLARATIONHANDLER_SUFFIX}-tools)
set(DECLARATIONHANDLER_PACKAGE_Designer declarationhandler${DECLARATIONHANDLER_SUFFIX}-designer)
set(PACKAGE_REVISION 1)
if(DECLARATIONHANDLER_QT EQUAL 6)
  set(qt_package qt6-base-dev)
  set(designer_package designer-qt6)
else()
  set(qt_package qtbase5-dev)
  set(designer_package qttools5-dev-tools)
endif()

# What Debian wants in every package.
find_program(GZIP_PROGRAM gzip)
if(NOT GZIP_PROGRAM)
  message(STATUS "No Debian packages: gzip is missing")
  return()
endif()
set(documents ${PROJECT_BINARY_DIR}/debian)
configure_file(${PROJECT_SOURCE_DIR}/cmake/debian/changelog.in ${documents}/changelog.Debian @ONLY)
file(COPY ${PROJECT_SOURCE_DIR}/CHANGELOG.md DESTINATION ${documents})
file(RENAME ${documents}/CHANGELOG.md ${documents}/changelog)
execute_process(COMMAND ${GZIP_PROGRAM} -9nf ${documents}/changelog.Debian ${documents}/changelog)

get_cmake_property(CPACK_COMPONENTS_ALL COMPONENTS)
list(REMOVE_ITEM CPACK_COMPONENTS_ALL Unspecified)
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER ${component} upper)
  set(package ${DECLARATIONHANDLER_PACKAGE_${component}})
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${package})
  set(CPACK_DEBIAN_${upper}_FILE_NAME DEB-DEFAULT)
  install(FILES ${PROJECT_SOURCE_DIR}/cmake/debian/copyright
    ${documents}/changelog.Debian.gz ${documents}/changelog.gz
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${component} EXCLUDE_FROM_ALL)
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME declarationhandler${DECLARATIONHANDLER_SUFFIX})
set(CPACK_PACKAGE_CONTACT "${DECLARATIONHANDLER_MAINTAINER}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${PACKAGE_REVISION})
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(exact "(= ${PROJECT_VERSION}-${PACKAGE_REVISION})")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/cmake/debian/triggers)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "The shared libraries: they keep properties of widgets equal to the values of
statements, and write the widgets' values back to the data when asked. An
inspector shows what they do in a running program.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "${DECLARATIONHANDLER_PACKAGE_Runtime} ${exact}, ${qt_package} (>= ${DECLARATIONHANDLER_QT_MINIMUM})")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
  "What programs are built with: headers, and the files that CMake, pkg-config
and qmake find the libraries with.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "${DECLARATIONHANDLER_PACKAGE_Runtime} ${exact}")
# Compiles the resource files that a form names for declview.
set(CPACK_DEBIAN_TOOLS_PACKAGE_SUGGESTS ${qt_package}-tools)
# Brings libedit2 too, where decleval is linked with it.
set(CPACK_DEBIAN_TOOLS_PACKAGE_SHLIBDEPS ON)
if(TARGET decleval)
  get_target_property(definitions decleval COMPILE_DEFINITIONS)
  if(NOT "DECLEVAL_EDITING" IN_LIST definitions)
    message(WARNING "The package of the tools comes without line editing: libedit-dev or pkgconf is missing")
  endif()
endif()
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/src)
set(CPACK_COMPONENT_TOOLS_DESCRIPTION "For the authors of forms: declview shows a form live, declcheck checks its
statements, decleval evaluates one.")

set(CPACK_DEBIAN_DESIGNER_PACKAGE_SECTION devel)
# The checker and the preview are programs of the tools.
set(CPACK_DEBIAN_DESIGNER_PACKAGE_DEPENDS
  "${DECLARATIONHANDLER_PACKAGE_Runtime} ${exact}, ${DECLARATIONHANDLER_PACKAGE_Tools} ${exact}, ${designer_package}")
set(CPACK_DEBIAN_DESIGNER_PACKAGE_SHLIBDEPS ON)
set(CPACK_COMPONENT_DESIGNER_DESCRIPTION "A plugin for Qt Designer: the statements of a form as a table, with an editor
that checks them as one types, and a preview over data.")

include(CPack)
