# Installs a build tree into an empty folder and checks that what a user looks for is there.
file(REMOVE_RECURSE ${PREFIX})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${PREFIX}
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
file(GLOB_RECURSE installed RELATIVE ${PREFIX} ${PREFIX}/*)
set(wanted_of_qt "")
if(QT)
  set(wanted_of_qt "include/pixvane/qt/pixvane_widget\\.h" "lib.*/libpixvane-qt\\.so\\.0"
    "lib.*/cmake/Pixvane/PixvaneQtTargets\\.cmake" "lib.*/qt6/plugins/designer/pixvane-designer\\.so")
endif()
foreach(wanted ${wanted_of_qt}
    "include/pixvane/pixvane\\.h" "include/pixvane/pixvane\\.hpp" "lib.*/libpixvane\\.so" "lib.*/libpixvane\\.so\\.0"
    "lib.*/cmake/Pixvane/PixvaneConfig\\.cmake" "lib.*/cmake/Pixvane/PixvaneConfigVersion\\.cmake"
    "lib.*/pkgconfig/pixvane\\.pc" "bin/pixvane" ".*/pixvane/__init__\\.py" "share/doc/.*/LICENSE")
  set(found ${installed})
  list(FILTER found INCLUDE REGEX "^${wanted}$")
  if(NOT found)
    message(FATAL_ERROR "nothing like ${wanted} was installed; this was: ${installed}")
  endif()
endforeach()
