# SPDX-License-Identifier: Apache-2.0
# Installs the build into a new folder and checks the result. Needs BUILD_FOLDER.
cmake_minimum_required(VERSION 3.25)
string(RANDOM LENGTH 12 NAME)
set(PREFIX "${BUILD_FOLDER}/installation-${NAME}")
execute_process(COMMAND "${CMAKE_COMMAND}" --install "${BUILD_FOLDER}" --prefix "${PREFIX}"
  RESULT_VARIABLE STATUS OUTPUT_VARIABLE OUTPUT ERROR_VARIABLE OUTPUT)

set(PROBLEMS)
set(SIZES 16 24 32 48 64 128 256 512)
set(EXPECTED
  bin/orvane
  share/applications/org.orvane.Orvane.desktop
  share/dbus-1/services/org.orvane.Orvane.service
  share/icons/hicolor/scalable/apps/org.orvane.Orvane.svg
  share/metainfo/org.orvane.Orvane.metainfo.xml)
foreach(SIZE ${SIZES})
  list(APPEND EXPECTED share/icons/hicolor/${SIZE}x${SIZE}/apps/org.orvane.Orvane.png)
endforeach()
list(SORT EXPECTED)
file(GLOB_RECURSE FOUND RELATIVE "${PREFIX}" "${PREFIX}/*")
list(SORT FOUND)
if(NOT FOUND STREQUAL EXPECTED)
  list(APPEND PROBLEMS "expected ${EXPECTED}" "found ${FOUND}" "the installation said ${OUTPUT}")
endif()

# A PNG file has its width and height in bytes 16 to 23.
foreach(SIZE ${SIZES})
  file(READ "${PREFIX}/share/icons/hicolor/${SIZE}x${SIZE}/apps/org.orvane.Orvane.png" EXTENT OFFSET 16 LIMIT 8 HEX)
  math(EXPR WIDTH "0x100000000 + ${SIZE}" OUTPUT_FORMAT HEXADECIMAL)
  string(SUBSTRING "${WIDTH}" 3 8 WIDTH)
  if(NOT EXTENT STREQUAL "${WIDTH}${WIDTH}")
    list(APPEND PROBLEMS "the icon of ${SIZE} points has the extent ${EXTENT}")
  endif()
endforeach()

file(STRINGS "${PREFIX}/share/dbus-1/services/org.orvane.Orvane.service" SERVICE)
if(NOT "Exec=${PREFIX}/bin/orvane --background" IN_LIST SERVICE)
  list(APPEND PROBLEMS "the bus would start: ${SERVICE}")
endif()

# KWin knows the program by this path.
file(STRINGS "${PREFIX}/share/applications/org.orvane.Orvane.desktop" ENTRY)
foreach(COMMAND "${PREFIX}/bin/orvane" "${PREFIX}/bin/orvane --toggle")
  if(NOT "Exec=${COMMAND}" IN_LIST ENTRY)
    list(APPEND PROBLEMS "the desktop entry does not run ${COMMAND}: ${ENTRY}")
  endif()
endforeach()

file(REMOVE_RECURSE "${PREFIX}")
if(NOT STATUS EQUAL 0 OR PROBLEMS)
  list(JOIN PROBLEMS "\n" PROBLEMS)
  message(FATAL_ERROR "The installation ended with ${STATUS}.\n${PROBLEMS}")
endif()
