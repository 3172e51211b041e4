# SPDX-License-Identifier: Apache-2.0
# Gives the target `llama`: an installed llama.cpp, or the one in the source tree that ORVANE_LLAMA_SOURCE_DIR names.
# ORVANE_LLAMA_BUILD_DIR may name a folder in which that tree has been built before (see scripts/fetch-llama).

find_package(llama CONFIG QUIET)
if(llama_FOUND)
  message(STATUS "llama.cpp: installed, ${llama_DIR}")
elseif(ORVANE_LLAMA_SOURCE_DIR)
  message(STATUS "llama.cpp: source tree ${ORVANE_LLAMA_SOURCE_DIR}")
  foreach(PART TESTS EXAMPLES TOOLS SERVER APP COMMON)
    set(LLAMA_BUILD_${PART} OFF CACHE BOOL "" FORCE)
  endforeach()
  set(BUILD_SHARED_LIBS OFF)
  add_subdirectory("${ORVANE_LLAMA_SOURCE_DIR}" "${CMAKE_BINARY_DIR}/llama.cpp" EXCLUDE_FROM_ALL SYSTEM)
else()
  message(FATAL_ERROR "llama.cpp was not found. Install it (libllama-dev, or Homebrew's llama.cpp), or give its "
    "source tree with -DORVANE_LLAMA_SOURCE_DIR=…; ./run and ./test fetch it by themselves.")
endif()
