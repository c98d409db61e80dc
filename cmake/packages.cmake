# Debian packages by CPack: the library, what its hosts need, the runner, the window system. `./dev package` makes them.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME brindle)
set(CPACK_PACKAGE_VENDOR "The Brindle maintainers")
set(CPACK_PACKAGE_CONTACT "The Brindle maintainers <maintainers@brindle.invalid>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR})
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

# What the dynamic loader knows is brought up to date once, when everything is installed.
file(WRITE ${PROJECT_BINARY_DIR}/packages/triggers "activate-noawait ldconfig\n")

# Debian wants its change logs and manual pages compressed.
find_program(gzip_program gzip)
function(compress_installed component pattern)
  if(gzip_program)
    install(CODE "file(GLOB files \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${pattern}\")
      execute_process(COMMAND \"${gzip_program}\" -9nf \${files} COMMAND_ERROR_IS_FATAL ANY)"
      COMPONENT ${component} ${ARGN})
  endif()
endfunction()
compress_installed(brindle "${CMAKE_INSTALL_MANDIR}/man1/brindle*.1")

# The name of a component is that of its package.
function(add_brindle_package name section summary description)
  cmake_parse_arguments(package "LIBRARY" "RECOMMENDS" "DEPENDS" ${ARGN})
  string(TOUPPER ${name} upper)
  set(CPACK_COMPONENTS_ALL ${CPACK_COMPONENTS_ALL} ${name} PARENT_SCOPE)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${name} PARENT_SCOPE)
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section} PARENT_SCOPE)
  set(CPACK_DEBIAN_${upper}_PACKAGE_RECOMMENDS "${package_RECOMMENDS}" PARENT_SCOPE)
  if(package_LIBRARY)
    set(CPACK_DEBIAN_${upper}_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/packages/triggers PARENT_SCOPE)
  endif()
  set(CPACK_COMPONENT_${upper}_DEPENDS ${package_DEPENDS} PARENT_SCOPE)
  set(CPACK_COMPONENT_${upper}_DESCRIPTION "${summary}\n${description}" PARENT_SCOPE)
  set(folder ${CMAKE_INSTALL_DATAROOTDIR}/doc/${name})
  install(FILES ${PROJECT_SOURCE_DIR}/LICENSE RENAME copyright DESTINATION ${folder} COMPONENT ${name} EXCLUDE_FROM_ALL)
  install(FILES ${PROJECT_SOURCE_DIR}/CHANGELOG.md RENAME changelog DESTINATION ${folder} COMPONENT ${name}
    EXCLUDE_FROM_ALL)
  compress_installed(${name} ${folder}/changelog EXCLUDE_FROM_ALL)
endfunction()

add_brindle_package(${brindle_library_package} libs "interpreter for the Brindle script language"
  "The library that applications link, with its classes for files and folders\nand its connection to D-Bus." LIBRARY)
set(window_package)
if(BRINDLE_QT)
  set(window_package brindle-qt)
  add_brindle_package(brindle-qt libs "windows for Brindle scripts"
    "Shows the dialogs and message boxes of scripts by Qt 6." LIBRARY DEPENDS ${brindle_library_package})
endif()
add_brindle_package(libbrindle-dev libdevel "interpreter for the Brindle script language, development files"
  "Headers and package files for applications that embed the interpreter."
  DEPENDS ${brindle_library_package} ${window_package})
add_brindle_package(brindle interpreters "runner for Brindle scripts"
  "Runs scripts of the Brindle language, checks them, and has a prompt." DEPENDS ${brindle_library_package}
  RECOMMENDS "brindle-qt, libedit2")
include(CPack)
