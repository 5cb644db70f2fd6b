# How every target of the project is compiled.

add_library(tolvex_options INTERFACE)
# No fused multiply-add: results are the same on every machine.
target_compile_options(tolvex_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -ffp-contract=off
  $<$<BOOL:${TOLVEX_WERROR}>:-Werror>)
if(TOLVEX_SANITIZE)
  target_compile_options(tolvex_options INTERFACE
    -fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
  target_link_options(tolvex_options INTERFACE -fsanitize=address,undefined)
endif()
if(TOLVEX_FUZZ)
  target_compile_options(tolvex_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# tolvex_folder(<target> <kind> <folder> [<library>...]): one target from the .cpp files of one
# folder, without its subfolders.
function(tolvex_folder target kind folder)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp)
  if(NOT sources)
    set(sources ${PROJECT_BINARY_DIR}/empty.cpp)
    file(WRITE ${sources} "")
  endif()
  add_library(${target} ${kind} ${sources})
  target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(${target} PRIVATE tolvex_options PUBLIC ${ARGN})
endfunction()
