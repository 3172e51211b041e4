# SPDX-License-Identifier: Apache-2.0
# Orvane.app. Installation deploys Qt into the bundle and signs it, so that it runs without Qt or Homebrew.

set(ORVANE_SIGNING_IDENTITY "-" CACHE STRING "Who signs the bundle, as codesign knows them; - is nobody in particular")
find_program(ORVANE_MACDEPLOYQT NAMES macdeployqt macdeployqt6 HINTS "${QT6_INSTALL_PREFIX}/${QT6_INSTALL_BINS}" REQUIRED)

# Builds an .icns file; each size in points at single and double resolution, named as iconutil requires.
function(orvane_add_icon ICON)
  set(SET "${CMAKE_CURRENT_BINARY_DIR}/Orvane.iconset")
  set(PICTURES)
  set(COPIES)
  foreach(POINTS 16 32 128 256 512)
    math(EXPR TWICE "2 * ${POINTS}")
    set(NAMES "icon_${POINTS}x${POINTS}.png" "icon_${POINTS}x${POINTS}@2x.png")
    foreach(PIXELS ${POINTS} ${TWICE})
      list(POP_FRONT NAMES NAME)
      set(PICTURE "${PROJECT_SOURCE_DIR}/data/icons/${PIXELS}.png")
      list(APPEND PICTURES "${PICTURE}")
      list(APPEND COPIES COMMAND "${CMAKE_COMMAND}" -E copy "${PICTURE}" "${SET}/${NAME}")
    endforeach()
  endforeach()
  list(REMOVE_DUPLICATES PICTURES)
  add_custom_command(OUTPUT "${ICON}"
    COMMAND "${CMAKE_COMMAND}" -E make_directory "${SET}" ${COPIES}
    COMMAND iconutil --convert icns --output "${ICON}" "${SET}"
    DEPENDS ${PICTURES} VERBATIM)
endfunction()

function(orvane_make_bundle TARGET)
  set(ICON "${CMAKE_CURRENT_BINARY_DIR}/Orvane.icns")
  orvane_add_icon("${ICON}")
  target_sources(${TARGET} PRIVATE "${ICON}")
  set_source_files_properties("${ICON}" PROPERTIES MACOSX_PACKAGE_LOCATION Resources)
  set(DATA "${PROJECT_SOURCE_DIR}/data/macos")
  set_target_properties(${TARGET} PROPERTIES
    OUTPUT_NAME Orvane
    MACOSX_BUNDLE ON
    MACOSX_BUNDLE_INFO_PLIST "${DATA}/Info.plist.in"
    MACOSX_BUNDLE_GUI_IDENTIFIER org.orvane.Orvane
    MACOSX_BUNDLE_BUNDLE_NAME Orvane
    MACOSX_BUNDLE_ICON_FILE Orvane
    MACOSX_BUNDLE_SHORT_VERSION_STRING "${PROJECT_VERSION}"
    MACOSX_BUNDLE_BUNDLE_VERSION "${PROJECT_VERSION}"
    # macdeployqt finds Qt by the link path's rpath and removes it.
    INSTALL_RPATH "@executable_path/../Frameworks"
    INSTALL_RPATH_USE_LINK_PATH ON)
  # A stable identity keeps the user's permissions across builds.
  add_custom_command(TARGET ${TARGET} POST_BUILD
    COMMAND codesign --force --sign "${ORVANE_SIGNING_IDENTITY}" "$<TARGET_BUNDLE_DIR:${TARGET}>" VERBATIM)

  install(TARGETS ${TARGET} BUNDLE DESTINATION .)
  install(CODE "
    set(ORVANE_MACDEPLOYQT \"${ORVANE_MACDEPLOYQT}\")
    set(ORVANE_LIBRARY_FOLDER \"${QT6_INSTALL_PREFIX}/${QT6_INSTALL_LIBS}\")
    set(ORVANE_VIEWS_FOLDER \"${PROJECT_SOURCE_DIR}/src/ContentView\")
    set(ORVANE_SIGNING_IDENTITY \"${ORVANE_SIGNING_IDENTITY}\")
    set(ORVANE_ENTITLEMENTS \"${DATA}/Orvane.entitlements\")")
  install(SCRIPT "${DATA}/deploy.cmake")
endfunction()
