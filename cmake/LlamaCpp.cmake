# SPDX-License-Identifier: Apache-2.0
# Defines the target `llama`: an installed llama.cpp (scripts/fetch-llama provides one), or the source tree
# ORVANE_LLAMA_SOURCE_DIR. Sets ORVANE_LLAMA_BACK_ENDS to the folder of plug-in back ends, or to empty if they are
# linked in.

find_package(llama CONFIG QUIET)
if(llama_FOUND)
  message(STATUS "llama.cpp: installed, ${llama_DIR}")
  # From ggml's CMake configuration. Without GGML_BACKEND_DIR, plug-ins are in ggml's bin folder.
  set(ORVANE_LLAMA_BACK_ENDS "")
  if(GGML_BACKEND_DL AND GGML_BACKEND_DIR)
    set(ORVANE_LLAMA_BACK_ENDS "${GGML_BACKEND_DIR}")
  elseif(GGML_BACKEND_DL)
    set(ORVANE_LLAMA_BACK_ENDS "${GGML_BIN_DIR}")
  endif()
  if(TARGET OpenMP::OpenMP_CXX)
    # We link OpenMP's library, but have no code for it, and its macro does not go with our precompiled headers.
    set_property(TARGET OpenMP::OpenMP_CXX PROPERTY INTERFACE_COMPILE_OPTIONS "")
  endif()
elseif(ORVANE_LLAMA_SOURCE_DIR)
  message(STATUS "llama.cpp: source tree ${ORVANE_LLAMA_SOURCE_DIR}")
  foreach(PART TESTS EXAMPLES TOOLS SERVER APP COMMON)
    set(LLAMA_BUILD_${PART} OFF CACHE BOOL "" FORCE)
  endforeach()
  set(BUILD_SHARED_LIBS OFF)
  if(APPLE)
    # Embeds the GPU code in the program.
    set(GGML_METAL ON CACHE BOOL "")
    set(GGML_METAL_EMBED_LIBRARY ON CACHE BOOL "")
  endif()
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 14)
    # g++ before 14 drops the stores that fill an AMX tile configuration; the first matrix product then dies of SIGILL.
    add_compile_options(-U__AMX_INT8__)
  endif()
  add_subdirectory("${ORVANE_LLAMA_SOURCE_DIR}" "${CMAKE_BINARY_DIR}/llama.cpp" EXCLUDE_FROM_ALL SYSTEM)
else()
  message(FATAL_ERROR "llama.cpp was not found. Install it (libllama-dev, or Homebrew's llama.cpp), or give its "
    "source tree with -DORVANE_LLAMA_SOURCE_DIR=…; ./run and ./test fetch it by themselves.")
endif()
