# What every target of the project shares: warnings, exact floating point, sanitizers.
add_library(pixvane_options INTERFACE)

target_compile_options(pixvane_options INTERFACE
  -Wall -Wextra -Wpedantic
  $<$<COMPILE_LANGUAGE:CXX>:-Wconversion>
  # GCC 12 sees overlaps in additions of strings that can't be (its bug 105651).
  $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>
  # A fused multiply-add changes results that are fixed to the bit.
  -ffp-contract=off
  $<$<BOOL:${PIXVANE_WERROR}>:-Werror>)

if(PIXVANE_SANITIZE)
  target_compile_options(pixvane_options INTERFACE
    -fsanitize=${PIXVANE_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(pixvane_options INTERFACE -fsanitize=${PIXVANE_SANITIZE})
endif()

# pixvane_floor(NAME SOURCES... [USES targets...]): one floor of the house as a static library.
function(pixvane_floor name)
  cmake_parse_arguments(floor "" "" "SOURCES;USES" ${ARGN})
  add_library(pixvane_${name} STATIC ${floor_SOURCES})
  target_include_directories(pixvane_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(pixvane_${name} PUBLIC ${floor_USES} PRIVATE pixvane_options)
endfunction()
