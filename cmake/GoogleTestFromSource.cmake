# GoogleTest for another system than this one: packaged as sources only, so built with the tests.
set(VARILUM_GOOGLETEST_SOURCE /usr/src/googletest CACHE PATH "Sources of GoogleTest")
if(NOT EXISTS "${VARILUM_GOOGLETEST_SOURCE}/CMakeLists.txt")
  message(FATAL_ERROR "Testing a cross build takes GoogleTest's sources (Debian: googletest); "
                      "there are none in ${VARILUM_GOOGLETEST_SOURCE}.")
endif()
set(INSTALL_GTEST OFF)
set(BUILD_SHARED_LIBS OFF)
add_subdirectory("${VARILUM_GOOGLETEST_SOURCE}" "${CMAKE_BINARY_DIR}/googletest"
                 EXCLUDE_FROM_ALL SYSTEM)
foreach(part gmock gtest_main)
  if(NOT TARGET GTest::${part})
    add_library(GTest::${part} ALIAS ${part})
  endif()
endforeach()
