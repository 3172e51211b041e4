# SPDX-License-Identifier: Apache-2.0
# Gives the target `llama`: an installed llama.cpp (scripts/fetch-llama makes one), or the one in the source tree that
# ORVANE_LLAMA_SOURCE_DIR names. ORVANE_LLAMA_BACK_ENDS is the folder with the back ends of an installed one that has them
# as plug-ins, and else empty.

find_package(llama CONFIG QUIET)
if(llama_FOUND)
  message(STATUS "llama.cpp: installed, ${llama_DIR}")
  # Both come from ggml's own configuration. Without a folder of their own the plug-ins are beside ggml's programs.
  set(ORVANE_LLAMA_BACK_ENDS "")
  if(GGML_BACKEND_DL AND GGML_BACKEND_DIR)
    set(ORVANE_LLAMA_BACK_ENDS "${GGML_BACKEND_DIR}")
  elseif(GGML_BACKEND_DL)
    set(ORVANE_LLAMA_BACK_ENDS "${GGML_BIN_DIR}")
  endif()
elseif(ORVANE_LLAMA_SOURCE_DIR)
  message(STATUS "llama.cpp: source tree ${ORVANE_LLAMA_SOURCE_DIR}")
  foreach(PART TESTS EXAMPLES TOOLS SERVER APP COMMON)
    set(LLAMA_BUILD_${PART} OFF CACHE BOOL "" FORCE)
  endforeach()
  set(BUILD_SHARED_LIBS OFF)
  if(APPLE)
    # The program carries the GPU's code in itself.
    set(GGML_METAL ON CACHE BOOL "")
    set(GGML_METAL_EMBED_LIBRARY ON CACHE BOOL "")
  endif()
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 14)
    # Those compilers drop the stores that fill an AMX tile configuration, and the first matrix product ends the
    # process with an illegal instruction.
    add_compile_options(-U__AMX_INT8__)
  endif()
  add_subdirectory("${ORVANE_LLAMA_SOURCE_DIR}" "${CMAKE_BINARY_DIR}/llama.cpp" EXCLUDE_FROM_ALL SYSTEM)
else()
  message(FATAL_ERROR "llama.cpp was not found. Install it (libllama-dev, or Homebrew's llama.cpp), or give its "
    "source tree with -DORVANE_LLAMA_SOURCE_DIR=…; ./run and ./test fetch it by themselves.")
endif()
