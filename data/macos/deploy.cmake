# SPDX-License-Identifier: Apache-2.0
# Run at installation: puts Qt into the installed bundle, looks whether it stands on its own, and signs it. Needs
# ORVANE_MACDEPLOYQT, ORVANE_LIBRARY_FOLDER, ORVANE_VIEWS_FOLDER, ORVANE_SIGNING_IDENTITY and ORVANE_ENTITLEMENTS.
set(BUNDLE "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/Orvane.app")

execute_process(COMMAND "${ORVANE_MACDEPLOYQT}" "${BUNDLE}" "-qmldir=${ORVANE_VIEWS_FOLDER}"
  "-libpath=${ORVANE_LIBRARY_FOLDER}" -always-overwrite -verbose=1
  COMMAND_ERROR_IS_FATAL ANY)

file(GLOB FRAMEWORKS LIST_DIRECTORIES true "${BUNDLE}/Contents/Frameworks/*.framework")
file(GLOB_RECURSE LIBRARIES "${BUNDLE}/Contents/*.dylib")

# What a binary takes from elsewhere than the system or the bundle would be missing on another machine.
function(check_references BINARY)
  execute_process(COMMAND otool -D "${BINARY}" OUTPUT_VARIABLE OWN_NAME COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND otool -L "${BINARY}" OUTPUT_VARIABLE REFERENCES COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCHALL "\t/[^(\n]*" REFERENCES "${REFERENCES}")
  foreach(REFERENCE ${REFERENCES})
    string(STRIP "${REFERENCE}" REFERENCE)
    string(FIND "${OWN_NAME}" "${REFERENCE}" IS_OWN)
    if(IS_OWN EQUAL -1 AND NOT REFERENCE MATCHES "^/(usr/lib|System)/")
      message(SEND_ERROR "${BINARY} needs ${REFERENCE}, which is not in the bundle.")
    endif()
  endforeach()
endfunction()
set(BINARIES "${BUNDLE}/Contents/MacOS/Orvane" ${LIBRARIES})
foreach(FRAMEWORK ${FRAMEWORKS})
  cmake_path(GET FRAMEWORK STEM NAME)
  list(APPEND BINARIES "${FRAMEWORK}/${NAME}")
endforeach()
foreach(BINARY ${BINARIES})
  check_references("${BINARY}")
endforeach()

# The hardened runtime lets a program load only what the same team has signed, and without an identity there is none.
set(SIGN codesign --force --sign "${ORVANE_SIGNING_IDENTITY}")
if(NOT ORVANE_SIGNING_IDENTITY STREQUAL "-")
  list(APPEND SIGN --timestamp --options runtime)
endif()
# From the inside out: a signature covers those of what it contains.
foreach(CODE ${LIBRARIES} ${FRAMEWORKS})
  execute_process(COMMAND ${SIGN} "${CODE}" COMMAND_ERROR_IS_FATAL ANY)
endforeach()
# What the hardened runtime is asked to allow: AppleScript sends events to other applications, and the engine of Qt's views
# compiles their JavaScript. (The file itself may hold no comment.)
execute_process(COMMAND ${SIGN} --entitlements "${ORVANE_ENTITLEMENTS}" "${BUNDLE}" COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND codesign --verify --deep --strict "${BUNDLE}" COMMAND_ERROR_IS_FATAL ANY)
