# What programs for Windows need beside their sources: version information, an icon, and what Debian has only as
# source. KESTRUM_QCUSTOMPLOT is the folder of QCustomPlot's source package.
enable_language(RC)
find_program(KESTRUM_RSVG rsvg-convert REQUIRED)
find_program(KESTRUM_ICOTOOL icotool REQUIRED)

# The icon of that name in packaging/desktop, in the sizes that Windows shows.
function(kestrum_win32_icon name icon)
  set(pictures)
  foreach(side 16 24 32 48 64 256)
    set(picture ${CMAKE_BINARY_DIR}/icons/${name}-${side}.png)
    add_custom_command(
      OUTPUT ${picture}
      COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/icons
      COMMAND ${KESTRUM_RSVG} -w ${side} -h ${side} -o ${picture}
              ${PROJECT_SOURCE_DIR}/packaging/desktop/org.kestrum.${name}.svg
      DEPENDS ${PROJECT_SOURCE_DIR}/packaging/desktop/org.kestrum.${name}.svg)
    list(APPEND pictures ${picture})
  endforeach()
  add_custom_command(
    OUTPUT ${CMAKE_BINARY_DIR}/icons/${name}.ico
    COMMAND ${KESTRUM_ICOTOOL} -c -o ${CMAKE_BINARY_DIR}/icons/${name}.ico ${pictures}
    DEPENDS ${pictures})
  add_custom_target(icon_${name} DEPENDS ${CMAKE_BINARY_DIR}/icons/${name}.ico)
  set(${icon} ${CMAKE_BINARY_DIR}/icons/${name}.ico PARENT_SCOPE)
endfunction()
kestrum_win32_icon(kestrum KESTRUM_ICON_KESTRUM)
kestrum_win32_icon(orvandi KESTRUM_ICON_ORVANDI)

# Gives a program its icon, "kestrum" or "orvandi", and the description that Windows shows of it.
function(kestrum_win32_program target description icon)
  string(TOUPPER ${icon} upper)
  set(KESTRUM_RC_ICON ${KESTRUM_ICON_${upper}})
  set(KESTRUM_RC_DESCRIPTION "${description}")
  set(KESTRUM_RC_NAME ${target})
  set(KESTRUM_RC_MANIFEST ${PROJECT_SOURCE_DIR}/packaging/windows/program.manifest)
  configure_file(${PROJECT_SOURCE_DIR}/packaging/windows/program.rc.in ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc @ONLY)
  target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
  set_source_files_properties(${CMAKE_CURRENT_BINARY_DIR}/${target}.rc PROPERTIES OBJECT_DEPENDS ${KESTRUM_RC_ICON})
  add_dependencies(${target} icon_${icon})
  qt_import_plugins(${target} INCLUDE Qt6::QWindowsIntegrationPlugin Qt6::QWindowsVistaStylePlugin)
endfunction()

add_library(qcustomplot STATIC ${KESTRUM_QCUSTOMPLOT}/qcustomplot.cpp ${KESTRUM_QCUSTOMPLOT}/qcustomplot.h)
set_target_properties(qcustomplot PROPERTIES AUTOMOC ON)
target_include_directories(qcustomplot SYSTEM PUBLIC ${KESTRUM_QCUSTOMPLOT})
target_link_libraries(qcustomplot PUBLIC Qt6::Widgets Qt6::PrintSupport)
target_compile_features(qcustomplot PUBLIC cxx_std_20)
add_library(QCustomPlotQt6::QCustomPlotQt6 ALIAS qcustomplot)
