# What `cmake --install` lays down: libraries, headers, command line, Python package, and how others find them.
include(CMakePackageConfigHelpers)

# pixvane_way(OUT FROM TO): how one installed folder is reached from another, wherever the prefix is.
function(pixvane_way out from to)
  file(RELATIVE_PATH way /prefix/${from} /prefix/${to})
  string(REGEX REPLACE "/$" "" way "${way}")
  set(${out} ${way} PARENT_SCOPE)
endfunction()

# The library, under its versioned name, and the development files.
install(TARGETS pixvane EXPORT PixvaneTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/pixvane
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  FILES_MATCHING PATTERN "*.h" PATTERN "*.hpp")

# find_package(Pixvane) gives Pixvane::pixvane.
set(PIXVANE_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/Pixvane)
install(EXPORT PixvaneTargets NAMESPACE Pixvane:: DESTINATION ${PIXVANE_CMAKE_DIR})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/PixvaneConfig.cmake.in
  ${PROJECT_BINARY_DIR}/install/PixvaneConfig.cmake
  INSTALL_DESTINATION ${PIXVANE_CMAKE_DIR}
  NO_SET_AND_CHECK_MACRO)
# Before 1.0 a minor version may change the interface.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/install/PixvaneConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/install/PixvaneConfig.cmake
  ${PROJECT_BINARY_DIR}/install/PixvaneConfigVersion.cmake
  DESTINATION ${PIXVANE_CMAKE_DIR})

# The Qt widget and its Designer plugin, where they were built: find_package(Pixvane COMPONENTS Qt) gives
# Pixvane::Qt. Qt looks for the plugin under its own prefix, else where QT_PLUGIN_PATH points.
if(TARGET pixvane_qt)
  set_target_properties(pixvane_qt PROPERTIES INSTALL_RPATH "$ORIGIN")
  install(TARGETS pixvane_qt EXPORT PixvaneQtTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
  install(FILES
    ${PROJECT_SOURCE_DIR}/hosts/qt/pixvane_members.h
    ${PROJECT_SOURCE_DIR}/hosts/qt/pixvane_qt_global.h
    ${PROJECT_SOURCE_DIR}/hosts/qt/pixvane_widget.h
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/pixvane/qt)
  install(EXPORT PixvaneQtTargets NAMESPACE Pixvane:: DESTINATION ${PIXVANE_CMAKE_DIR})
endif()
if(TARGET pixvane_designer)
  set(PIXVANE_PLUGIN_DIR ${CMAKE_INSTALL_LIBDIR}/qt6/plugins)
  pixvane_way(PIXVANE_PLUGIN_TO_LIB ${PIXVANE_PLUGIN_DIR}/designer ${CMAKE_INSTALL_LIBDIR})
  set_target_properties(pixvane_designer PROPERTIES INSTALL_RPATH "$ORIGIN/${PIXVANE_PLUGIN_TO_LIB}")
  install(TARGETS pixvane_designer LIBRARY DESTINATION ${PIXVANE_PLUGIN_DIR}/designer)
endif()

# pkg-config. The prefix is told from where the file lies, so that the tree may be moved.
pixvane_way(PIXVANE_PC_TO_PREFIX ${CMAKE_INSTALL_LIBDIR}/pkgconfig .)
configure_file(${PROJECT_SOURCE_DIR}/cmake/pixvane.pc.in ${PROJECT_BINARY_DIR}/install/pixvane.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/install/pixvane.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# The command line finds the library from where it lies itself.
if(TARGET pixvane-cli)
  pixvane_way(PIXVANE_BIN_TO_LIB ${CMAKE_INSTALL_BINDIR} ${CMAKE_INSTALL_LIBDIR})
  set_target_properties(pixvane-cli PROPERTIES INSTALL_RPATH "$ORIGIN/${PIXVANE_BIN_TO_LIB}")
  install(TARGETS pixvane-cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

# The studio, and what desktops know it by.
if(TARGET pixvane-studio)
  set_target_properties(pixvane-studio PROPERTIES INSTALL_RPATH "$ORIGIN/${PIXVANE_BIN_TO_LIB}")
  install(TARGETS pixvane-studio RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  set(studio ${PROJECT_SOURCE_DIR}/hosts/studio/data/org.pixvane.Studio)
  install(FILES ${studio}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES ${studio}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
  foreach(side ${PIXVANE_ICON_SIDES})
    install(FILES ${PROJECT_BINARY_DIR}/hosts/studio/icons/${side}.png
      DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${side}x${side}/apps RENAME org.pixvane.Studio.png)
  endforeach()
endif()

# The Python package goes where the interpreter looks under this prefix; if it looks nowhere there, into the
# folder for packages of any Python 3, and the user sets PYTHONPATH.
find_package(Python3 3.9 QUIET COMPONENTS Interpreter)
set(python_dir "")
if(Python3_FOUND)
  execute_process(
    COMMAND ${Python3_EXECUTABLE} -c
      "import site, sys; p = sys.argv[1].rstrip('/') + '/'; print(next((s[len(p):] for s in site.getsitepackages() if s.startswith(p + 'lib/')), ''))"
      ${CMAKE_INSTALL_PREFIX}
    OUTPUT_VARIABLE python_dir OUTPUT_STRIP_TRAILING_WHITESPACE)
endif()
if(NOT python_dir)
  set(python_dir lib/python3/dist-packages)
endif()
set(PIXVANE_PYTHON_DIR ${python_dir} CACHE STRING "Where the Python package goes, from the prefix on")
install(DIRECTORY ${PROJECT_SOURCE_DIR}/hosts/python/pixvane
  DESTINATION ${PIXVANE_PYTHON_DIR}
  FILES_MATCHING PATTERN "*.py" PATTERN "*.pyi" PATTERN "py.typed"
  PATTERN "__pycache__" EXCLUDE
  PATTERN "_location.py" EXCLUDE)
pixvane_way(PIXVANE_PYTHON_TO_LIB ${PIXVANE_PYTHON_DIR}/pixvane ${CMAKE_INSTALL_LIBDIR})
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/install/_location.py @ONLY CONTENT
[=["""Where the shared library lies, from this folder."""
# SPDX-License-Identifier: MIT
LIBRARY = "@PIXVANE_PYTHON_TO_LIB@/libpixvane.so.@PROJECT_VERSION_MAJOR@"
]=])
install(FILES ${PROJECT_BINARY_DIR}/install/_location.py DESTINATION ${PIXVANE_PYTHON_DIR}/pixvane)

install(FILES ${PROJECT_SOURCE_DIR}/LICENSE ${PROJECT_SOURCE_DIR}/README.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
