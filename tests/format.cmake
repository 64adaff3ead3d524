# Every source file is formatted as .clang-format says.
#   cmake -DTOP=<source folder> -DCLANG_FORMAT=<program> -P format.cmake
file(GLOB_RECURSE sources ${TOP}/common/*.h ${TOP}/common/*.cpp ${TOP}/core/*.h ${TOP}/core/*.cpp ${TOP}/asm/*.h
     ${TOP}/asm/*.cpp ${TOP}/files/*.h ${TOP}/files/*.cpp ${TOP}/ui/*.h ${TOP}/ui/*.cpp ${TOP}/tests/*.h
     ${TOP}/tests/*.cpp ${TOP}/bench/*.h ${TOP}/bench/*.cpp ${TOP}/docs/*.cpp)
execute_process(COMMAND ${CLANG_FORMAT} --dry-run --Werror ${sources} RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "clang-format would change the files named above")
endif()
