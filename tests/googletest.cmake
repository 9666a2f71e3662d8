# GoogleTest, built as the project is: from sources that are installed, else from those that its own
# address has.
set(DORVAK_GOOGLETEST_SOURCES /usr/src/googletest
    CACHE PATH "GoogleTest's sources; fetched where the folder has none")
set(gtest_force_shared_crt OFF CACHE INTERNAL "")
set(INSTALL_GTEST OFF CACHE INTERNAL "")
set(BUILD_GMOCK OFF CACHE INTERNAL "")
set(CMAKE_POLICY_DEFAULT_CMP0091 NEW) # with the project's runtime library
if(EXISTS "${DORVAK_GOOGLETEST_SOURCES}/CMakeLists.txt")
  add_subdirectory(${DORVAK_GOOGLETEST_SOURCES} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
else()
  include(FetchContent)
  FetchContent_Declare(
    googletest
    URL https://github.com/google/googletest/releases/download/v1.15.2/googletest-1.15.2.tar.gz
    URL_HASH SHA256=7b42b4d6ed48810c5362c265a17faebe90dc2373c885e5216439d37927f02926
    DOWNLOAD_EXTRACT_TIMESTAMP ON)
  FetchContent_MakeAvailable(googletest)
endif()
