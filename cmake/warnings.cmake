# One interface target carries what every target of our own is compiled with.
add_library(estructura_warnings INTERFACE)
target_compile_options(estructura_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wnon-virtual-dtor -Wold-style-cast
  -Wcast-align -Woverloaded-virtual -Wnull-dereference -Wdouble-promotion -Wformat=2 -Wimplicit-fallthrough
  -Wundef -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(estructura_warnings INTERFACE -Wduplicated-cond -Wduplicated-branches -Wlogical-op)
  # g++ 12 reports overlapping copies inside std::string where there are none (its bug 105651, mended in 13).
  if(CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(estructura_warnings INTERFACE -Wno-restrict)
  endif()
endif()
if(ESTRUCTURA_SANITIZE)
  target_compile_options(estructura_warnings INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(estructura_warnings INTERFACE -fsanitize=address,undefined)
  target_compile_definitions(estructura_warnings INTERFACE ESTRUCTURA_SANITIZED)
  # g++ 12 sees null pointers of its own making once the sanitizers have instrumented the code.
  target_compile_options(estructura_warnings INTERFACE -Wno-null-dereference)
endif()
if(ESTRUCTURA_COVERAGE)
  # Little is optimized, so that lines are still lines, but the tests that look at processor time pass.
  target_compile_options(estructura_warnings INTERFACE --coverage -fprofile-abs-path -Og)
  target_link_options(estructura_warnings INTERFACE --coverage)
endif()
if(ESTRUCTURA_FUZZ)
  target_compile_options(estructura_warnings INTERFACE -fsanitize=fuzzer-no-link)
endif()

# A room: its library, its sources, and the rooms that it may see.
function(estructura_room name)
  cmake_parse_arguments(ROOM "" "" "SOURCES;BELOW" ${ARGN})
  add_library(estructura_${name} STATIC ${ROOM_SOURCES})
  # Headers are found by their path from the top; that nobody looks up is checked by tests/rooms.cmake.
  target_include_directories(estructura_${name} PUBLIC ${CMAKE_SOURCE_DIR})
  foreach(below IN LISTS ROOM_BELOW)
    target_link_libraries(estructura_${name} PUBLIC estructura_${below})
  endforeach()
  target_link_libraries(estructura_${name} PRIVATE estructura_warnings)
endfunction()
