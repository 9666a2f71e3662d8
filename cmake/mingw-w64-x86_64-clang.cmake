# Cross-building for 64-bit Windows with clang, against the headers and libraries of MinGW-w64's GCC.
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64-x86_64.cmake)
execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-libgcc-file-name OUTPUT_VARIABLE gcc_folder)
get_filename_component(gcc_folder "${gcc_folder}" DIRECTORY)
set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_C_COMPILER_TARGET x86_64-w64-mingw32)
set(CMAKE_CXX_COMPILER_TARGET x86_64-w64-mingw32)
foreach(folder include/c++ include/c++/x86_64-w64-mingw32)
  string(APPEND CMAKE_CXX_FLAGS_INIT " -stdlib++-isystem ${gcc_folder}/${folder}")
endforeach()
set(CMAKE_EXE_LINKER_FLAGS_INIT "-L${gcc_folder} -pthread") # which the C++ library uses
