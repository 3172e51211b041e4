# SPDX-License-Identifier: Apache-2.0
# Compiler options for our own code; llama.cpp uses its own.

add_library(orvane_options INTERFACE)
target_compile_options(orvane_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual -Wnull-dereference
  $<$<BOOL:${ORVANE_WARNINGS_AS_ERRORS}>:-Werror>)
target_compile_definitions(orvane_options INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH QT_DISABLE_DEPRECATED_BEFORE=0x060400)

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # g++ 12 reports false null dereferences and sign conversions in coroutine frames and Qt headers.
  target_compile_options(orvane_options INTERFACE -Wno-null-dereference -Wno-sign-conversion)
endif()

# For tests, linked after the options of all code: the newer macros of Qt's test library convert a long into an int.
add_library(orvane_test_options INTERFACE)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND Qt6_VERSION VERSION_GREATER_EQUAL 6.5)
  target_compile_options(orvane_test_options INTERFACE -Wno-conversion)
endif()

if(ORVANE_PRECOMPILED_HEADERS)
  # Other targets take these with orvane_use_precompiled_headers. All need the same macros; some libraries ask for
  # -pthread, which sets one.
  target_compile_options(orvane_options INTERFACE -pthread)
  file(CONFIGURE OUTPUT "${CMAKE_BINARY_DIR}/precompiled.cpp" CONTENT "")
  add_library(orvane_precompiled STATIC "${CMAKE_BINARY_DIR}/precompiled.cpp")
  target_link_libraries(orvane_precompiled PRIVATE orvane_options Qt6::Core QCoro6::Core)
  target_precompile_headers(orvane_precompiled PRIVATE "${CMAKE_CURRENT_LIST_DIR}/Precompiled.h")
  if(CMAKE_CXX_COMPILER_LAUNCHER MATCHES "ccache$")
    # Without these, ccache compiles anew whatever uses precompiled headers.
    set(CMAKE_CXX_COMPILER_LAUNCHER
      "${CMAKE_COMMAND};-E;env;CCACHE_SLOPPINESS=pch_defines,time_macros;${CMAKE_CXX_COMPILER_LAUNCHER}")
  endif()
endif()

if(APPLE)
  # libc++ enables std::stop_token only as an experimental feature.
  target_compile_definitions(orvane_options INTERFACE _LIBCPP_ENABLE_EXPERIMENTAL)
endif()

if(ORVANE_SANITIZER)
  # Applies to the whole build: an uninstrumented library would hide its callers' errors.
  add_compile_options(-fsanitize=${ORVANE_SANITIZER} -fno-omit-frame-pointer -g)
  add_link_options(-fsanitize=${ORVANE_SANITIZER})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # g++ 12 reports false uninitialised reads of optionals in instrumented code.
    target_compile_options(orvane_options INTERFACE -Wno-maybe-uninitialized)
  endif()
endif()
