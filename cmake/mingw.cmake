# Compiles for Windows on Linux: for what knows neither Qt nor a host. See scripts/mingw.sh.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Programs carry their run-time libraries with them.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")

# Bullet and Eigen as this machine has them: headers alone, in folders that hold nothing else.
function(orv_foreign_headers target folder)
  if(NOT EXISTS ${folder})
    message(FATAL_ERROR "${folder} is missing: scripts/setup.sh installs it")
  endif()
  add_library(${target} INTERFACE IMPORTED GLOBAL)
  target_include_directories(${target} SYSTEM INTERFACE ${folder})
endfunction()
