# Compiles the sources of VAXEL_TOGETHER, which are targets, ten at a time: for builds that are made from nothing and
# are not worked with. To be given as CMAKE_PROJECT_INCLUDE.
function(vaxel_compile_together)
  set_target_properties(${VAXEL_TOGETHER} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 10)
endfunction()
cmake_language(DEFER CALL vaxel_compile_together)
