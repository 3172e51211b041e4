# SPDX-License-Identifier: Apache-2.0
# Helpers that define all our libraries and tests.

# orvane_use_precompiled_headers(TARGET): if they are switched on.
function(orvane_use_precompiled_headers TARGET)
  if(ORVANE_PRECOMPILED_HEADERS)
    target_precompile_headers(${TARGET} REUSE_FROM orvane_precompiled)
  endif()
endfunction()

# orvane_add_library(NAME SOURCES ... [PUBLIC ...] [PRIVATE ...])
# One static library per folder, so that the linker enforces the layers. Headers are included as "Folder/Name.h".
function(orvane_add_library NAME)
  cmake_parse_arguments(ARG "" "" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
  add_library(${NAME} STATIC ${ARG_SOURCES})
  target_include_directories(${NAME} PUBLIC "${PROJECT_SOURCE_DIR}/src")
  target_link_libraries(${NAME} PUBLIC ${ARG_PUBLIC} PRIVATE orvane_options ${ARG_PRIVATE})
  orvane_use_precompiled_headers(${NAME})
endfunction()

# orvane_add_test(NAME LABEL <unit|engine|desktop|ui|slow|wayland> SOURCES ... LIBRARIES ... [ARGUMENTS ...] [TIMEOUT s]
#                 [SESSION <x11|sway|labwc|gnome|kde>])
# A Qt Test program. Tests labelled desktop, ui, slow or wayland run in a private desktop session, on X11 unless SESSION
# says otherwise. Those labelled wayland need a desktop of another Debian release, and run only when asked for.
function(orvane_add_test NAME)
  cmake_parse_arguments(ARG "" "LABEL;SESSION;TIMEOUT" "SOURCES;LIBRARIES;ARGUMENTS" ${ARGN})
  if(NOT ARG_LABEL MATCHES "^(unit|engine|desktop|ui|slow|wayland)$")
    message(FATAL_ERROR "orvane_add_test(${NAME}): unknown label '${ARG_LABEL}'")
  endif()
  if(NOT ARG_SESSION)
    set(ARG_SESSION x11)
  endif()
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 120)
  endif()
  add_executable(${NAME} ${ARG_SOURCES})
  target_include_directories(${NAME} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
  target_link_libraries(${NAME} PRIVATE orvane_options orvane_test_options Qt6::Test ${ARG_LIBRARIES})
  orvane_use_precompiled_headers(${NAME})
  if(ARG_LABEL MATCHES "^(desktop|ui|slow|wayland)$")
    orvane_session_command(COMMAND ${ARG_SESSION})
    add_test(NAME ${NAME} COMMAND ${COMMAND} $<TARGET_FILE:${NAME}> ${ARG_ARGUMENTS})
  else()
    add_test(NAME ${NAME} COMMAND ${NAME} ${ARG_ARGUMENTS})
  endif()
  set_tests_properties(${NAME} PROPERTIES LABELS ${ARG_LABEL} TIMEOUT ${ARG_TIMEOUT})
endfunction()

# orvane_add_tests_on(<Sway|Labwc|Gnome|Plasma> TEST...): registers tests of private desktops once more, for this session and
# with the same properties: ATest becomes ASwayTest, and so on. All but those on sway are labelled wayland.
function(orvane_add_tests_on DESKTOP)
  string(TOLOWER ${DESKTOP} SESSION)
  string(REPLACE plasma kde SESSION ${SESSION})
  foreach(TEST ${ARGN})
    string(REGEX REPLACE "Test$" "${DESKTOP}Test" NAME ${TEST})
    orvane_session_command(COMMAND ${SESSION})
    add_test(NAME ${NAME} COMMAND ${COMMAND} $<TARGET_FILE:${TEST}>)
    foreach(PROPERTY LABELS TIMEOUT ENVIRONMENT)
      get_property(VALUE TEST ${TEST} PROPERTY ${PROPERTY})
      set_property(TEST ${NAME} PROPERTY ${PROPERTY} "${VALUE}")
    endforeach()
    if(NOT SESSION STREQUAL sway)
      set_property(TEST ${NAME} PROPERTY LABELS wayland)
    endif()
  endforeach()
endfunction()

# orvane_session_command(VARIABLE SESSION): the command that runs a test in a private session.
function(orvane_session_command VARIABLE SESSION)
  set(COMMAND "${PROJECT_SOURCE_DIR}/tests/applications/private-session" --session ${SESSION})
  if(SESSION STREQUAL gnome)
    list(APPEND COMMAND --before-login "${PROJECT_SOURCE_DIR}/tests/applications/gnome-login")
  endif()
  set(${VARIABLE} ${COMMAND} PARENT_SCOPE)
endfunction()
