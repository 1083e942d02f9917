# Compiles the sources of VAXEL_TOGETHER, which are targets, ten at a time: for builds that are made from nothing and
# are not worked with. To be given as CMAKE_PROJECT_INCLUDE.
function(vaxel_compile_together)
  set_target_properties(${VAXEL_TOGETHER} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 10)
  # Tests of several rooms come together: a name that hides another is no fault there, and one of them has names that
  # another has.
  target_compile_options(core_tests PRIVATE -w)
  set_source_files_properties(${CMAKE_SOURCE_DIR}/tests/app/print_commands_test.cpp TARGET_DIRECTORY core_tests
    PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()
cmake_language(DEFER CALL vaxel_compile_together)
