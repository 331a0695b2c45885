# The kinds of target that the house is built from, so that a folder's CMakeLists.txt is its list of sources.

add_library(tavro_flags INTERFACE)
target_compile_features(tavro_flags INTERFACE cxx_std_20)
target_compile_options(tavro_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wno-missing-field-initializers)
# g++ 12, optimising fully, sees overlapping copies inside of "text" + string where there are none (its bug 105329).
target_compile_options(tavro_flags INTERFACE $<$<AND:$<CXX_COMPILER_ID:GNU>,$<CONFIG:Release>>:-Wno-restrict>)
target_compile_definitions(tavro_flags INTERFACE QT_NO_KEYWORDS QT_NO_CAST_TO_ASCII)
target_include_directories(tavro_flags INTERFACE ${CMAKE_SOURCE_DIR})

# Everything that is built for running lies in one tree, as it will be installed.
set(TAVRO_STAGE ${CMAKE_BINARY_DIR}/stage)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# How a bundle's executable is installed: its name does not say that it is code, so that packagers' tools ask its mode.
set(TAVRO_EXECUTABLE
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

# A floor of the platform: a shared library, since host, plug-in and editor must meet the same objects.
function(tavro_platform_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
  add_library(${name} SHARED ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC tavro_flags ${ARG_PUBLIC} PRIVATE ${ARG_PRIVATE})
  # Clang keeps the sanitizers in the program, so that a fuzzed library has open ends.
  if(NOT TAVRO_FUZZ)
    target_link_options(${name} PRIVATE -Wl,--no-undefined)
  endif()
  set_target_properties(${name} PROPERTIES
    LIBRARY_OUTPUT_DIRECTORY ${TAVRO_STAGE}/lib
    BUILD_RPATH_USE_ORIGIN ON INSTALL_RPATH "$ORIGIN")
  install(TARGETS ${name} LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/tavro-print)
endfunction()

# What the platform or the driver loads on demand, from beside those libraries (platform/foundation/own_module.h).
function(tavro_platform_module name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  add_library(${name} MODULE ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE tavro_flags ${ARG_LINK})
  set_target_properties(${name} PROPERTIES
    CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON
    LIBRARY_OUTPUT_DIRECTORY ${TAVRO_STAGE}/lib
    BUILD_RPATH_USE_ORIGIN ON INSTALL_RPATH "$ORIGIN")
  install(TARGETS ${name} LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/tavro-print)
endfunction()

# A folder of the plug-in: objects that end up in the bundle's executable, and that tests link by themselves.
function(tavro_plugin_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;PUBLIC" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC tavro_flags ${ARG_PUBLIC})
  set_target_properties(${name} PROPERTIES CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
endfunction()

# A test program: googletest cases, run by ctest one by one. Each has an environment of its own (tests/support/environment.cpp).
function(tavro_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE tavro_flags test_environment ${ARG_LINK} test_places GTest::gtest)
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT ${TAVRO_TEST_SECONDS})
endfunction()

# Adds a folder that has something to build.
macro(tavro_add_folder folder)
  if(EXISTS ${CMAKE_SOURCE_DIR}/${folder}/CMakeLists.txt)
    add_subdirectory(${CMAKE_SOURCE_DIR}/${folder} ${CMAKE_BINARY_DIR}/${folder})
  endif()
endmacro()
