# SPDX-License-Identifier: Apache-2.0
# Runs at installation: deploys Qt into the bundle, checks that the bundle is self-contained, and signs it. Needs
# ORVANE_MACDEPLOYQT, ORVANE_LIBRARY_FOLDER, ORVANE_VIEWS_FOLDER, ORVANE_SIGNING_IDENTITY and ORVANE_ENTITLEMENTS.
set(BUNDLE "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/Orvane.app")

execute_process(COMMAND "${ORVANE_MACDEPLOYQT}" "${BUNDLE}" "-qmldir=${ORVANE_VIEWS_FOLDER}"
  "-libpath=${ORVANE_LIBRARY_FOLDER}" -always-overwrite -verbose=1
  COMMAND_ERROR_IS_FATAL ANY)

file(GLOB FRAMEWORKS LIST_DIRECTORIES true "${BUNDLE}/Contents/Frameworks/*.framework")
file(GLOB_RECURSE LIBRARIES "${BUNDLE}/Contents/*.dylib")

# References outside the system and the bundle would be missing on another machine.
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

# The hardened runtime loads only code signed by the same team, so it needs an identity.
set(SIGN codesign --force --sign "${ORVANE_SIGNING_IDENTITY}")
if(NOT ORVANE_SIGNING_IDENTITY STREQUAL "-")
  list(APPEND SIGN --timestamp --options runtime)
endif()
# Inside out: a signature covers those of nested code.
foreach(CODE ${LIBRARIES} ${FRAMEWORKS})
  execute_process(COMMAND ${SIGN} "${CODE}" COMMAND_ERROR_IS_FATAL ANY)
endforeach()
# Exceptions from the hardened runtime: Apple events to other applications (AppleScript), and JIT compilation in Qt's
# QML engine. (The entitlements file must not contain comments.)
execute_process(COMMAND ${SIGN} --entitlements "${ORVANE_ENTITLEMENTS}" "${BUNDLE}" COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND codesign --verify --deep --strict "${BUNDLE}" COMMAND_ERROR_IS_FATAL ANY)
