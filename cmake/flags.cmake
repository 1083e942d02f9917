# How everything is compiled and linked: what links vaxel_flags.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

add_library(vaxel_flags INTERFACE)
# The warnings are GCC's business; clang, which builds the fuzz targets, has others. GCC 12 finds overlaps (restrict)
# inside its own std::string where a text is put before another.
target_compile_options(vaxel_flags INTERFACE
  $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wno-restrict -Werror>
  $<$<COMPILE_LANGUAGE:CXX>:-ffunction-sections -fdata-sections>)
target_include_directories(vaxel_flags INTERFACE ${CMAKE_SOURCE_DIR}/src)
if(VAXEL_SANITIZE)
  target_compile_options(vaxel_flags INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  target_link_options(vaxel_flags INTERFACE -fsanitize=address,undefined)
endif()
if(VAXEL_FUZZ)
  target_compile_options(vaxel_flags INTERFACE -g -D_GLIBCXX_ASSERTIONS -fconstexpr-steps=10000000 -fno-omit-frame-pointer
    -fsanitize=fuzzer-no-link,address,undefined,float-cast-overflow -fno-sanitize-recover=all)
  target_link_options(vaxel_flags INTERFACE -fsanitize=address,undefined,float-cast-overflow)
endif()
