# The layers of the system as targets. Each layer sees only the headers of the layers that it names:
# its include root is a folder of links to its own public headers, so an include that points upwards
# does not compile.

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
endif()
find_program(MOLD_PROGRAM mold)

add_library(orv_flags INTERFACE)
target_compile_features(orv_flags INTERFACE cxx_std_17)
# -ffp-contract=off keeps debug, release and other compilers bit-identical.
target_compile_options(orv_flags INTERFACE -Wall -Wextra -Wpedantic -Werror -ffp-contract=off)
if(MOLD_PROGRAM AND NOT ORV_SANITIZE AND NOT ORV_FUZZ)
  target_link_options(orv_flags INTERFACE -fuse-ld=mold)
endif()
if(ORV_SANITIZE)
  target_compile_options(orv_flags INTERFACE -fsanitize=address,undefined
                         -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(orv_flags INTERFACE -fsanitize=address,undefined)
endif()
if(ORV_FUZZ)
  target_compile_options(orv_flags INTERFACE -fsanitize=fuzzer-no-link,address,undefined
                         -fno-sanitize-recover=all)
  target_link_options(orv_flags INTERFACE -fsanitize=address,undefined)
endif()

# orv_headers(<layer> <include root out var> DIRS <folders below src>)
function(orv_headers layer out)
  set(root ${CMAKE_BINARY_DIR}/include/${layer})
  file(REMOVE_RECURSE ${root})
  foreach(dir ${ARGN})
    file(MAKE_DIRECTORY ${root}/${dir})
    file(GLOB headers CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/${dir}/*.h)
    foreach(header ${headers})
      get_filename_component(name ${header} NAME)
      file(CREATE_LINK ${header} ${root}/${dir}/${name} SYMBOLIC)
    endforeach()
  endforeach()
  set(${out} ${root} PARENT_SCOPE)
endfunction()

# For what takes longer to optimise than it gains: little work around heavy templates.
set(ORV_QUICK_BUILD -O1)

# orv_layer(<layer> [QUICK] DIRS <folders below src> USES <lower layers> LIBS <foreign targets, public>
#           PRIVATE_LIBS <foreign targets that do not show in headers>)
function(orv_layer layer)
  cmake_parse_arguments(A QUICK "" "DIRS;USES;LIBS;PRIVATE_LIBS" ${ARGN})
  orv_headers(${layer} root ${A_DIRS})
  set(sources)
  foreach(dir ${A_DIRS})
    file(GLOB found CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/${dir}/*.cpp)
    list(APPEND sources ${found})
  endforeach()
  if(sources)
    add_library(${layer} STATIC ${sources})
    target_include_directories(${layer} PUBLIC ${root})
    target_link_libraries(${layer} PUBLIC ${A_USES} ${A_LIBS} PRIVATE orv_flags ${A_PRIVATE_LIBS})
    if(A_QUICK)
      target_compile_options(${layer} PRIVATE ${ORV_QUICK_BUILD})
    endif()
  else()
    add_library(${layer} INTERFACE)
    target_include_directories(${layer} INTERFACE ${root})
    target_link_libraries(${layer} INTERFACE ${A_USES} ${A_LIBS} ${A_PRIVATE_LIBS})
  endif()
endfunction()

# Compiling the tests takes longer than they gain by being optimised. Where several sources are
# compiled as one, GCC takes all but the first for headers, and their fixtures for shared ones.
set(ORV_TEST_FLAGS -O0 -fPIC -Wno-subobject-linkage)

# orv_tests(<folder below tests> USES <layers>): one program a folder, one CTest entry a source file.
# The suites of X_test.cpp are all called X.
function(orv_tests folder)
  cmake_parse_arguments(A "" "" "USES" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/${folder}/*.cpp)
  if(NOT sources)
    return()
  endif()
  string(REPLACE "/" "_" program test_${folder})
  add_executable(${program} ${sources})
  target_include_directories(${program} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(${program} PRIVATE ${A_USES} test_main orv_flags)
  target_compile_options(${program} PRIVATE ${ORV_TEST_FLAGS})
  target_compile_definitions(${program} PRIVATE ORV_SOURCE_DIR="${CMAKE_SOURCE_DIR}"
                             ORV_BINARY_DIR="${CMAKE_BINARY_DIR}")
  set(suites)
  foreach(source ${sources})
    get_filename_component(stem ${source} NAME_WE)
    if(stem MATCHES "^(.*)_test$")
      set(suite ${CMAKE_MATCH_1})
      list(APPEND suites ${suite})
      add_test(NAME ${folder}.${suite}
               COMMAND ${program} --gtest_brief=1 "--gtest_filter=${suite}.*:*/${suite}.*:${suite}/*")
      set_tests_properties(${folder}.${suite} PROPERTIES TIMEOUT 600
                           ENVIRONMENT "QT_QPA_PLATFORM=offscreen;SDL_VIDEODRIVER=dummy;LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/support/leaks.supp:print_suppressions=0")
    endif()
  endforeach()
  string(REPLACE ";" "," suites "${suites}")
  add_test(NAME ${folder}.suites COMMAND ${program} --only-suites=${suites})
endfunction()

# orv_bench(<source below bench, without .cpp> USES <targets>): the tests run each row once, at its
# shortest, to see that it works. A row that gives up leaves the program's exit status at 0.
function(orv_bench name)
  cmake_parse_arguments(A "" "" "USES" ${ARGN})
  add_executable(bench_${name} ${CMAKE_SOURCE_DIR}/bench/${name}.cpp)
  target_link_libraries(bench_${name} PRIVATE ${A_USES} benchmark::benchmark_main orv_flags)
  add_test(NAME bench.${name} COMMAND bench_${name} --benchmark_min_time=0)
  set_tests_properties(bench.${name} PROPERTIES TIMEOUT 120
                       ENVIRONMENT "ORV_BENCH_ONCE=1;RIGWRIGHT_DATA_ROOT=${CMAKE_BINARY_DIR}/bench_root"
                       FAIL_REGULAR_EXPRESSION "ERROR OCCURRED")
endfunction()

# orv_fuzz(<source below fuzz, without .cpp> USES <layers>): under ORV_FUZZ a libFuzzer program, else
# a program that replays the corpus once, which is what the tests run.
function(orv_fuzz name)
  cmake_parse_arguments(A "" "" "USES" ${ARGN})
  if(NOT EXISTS ${CMAKE_SOURCE_DIR}/fuzz/${name}.cpp)
    return()
  endif()
  add_executable(fuzz_${name} ${CMAKE_SOURCE_DIR}/fuzz/${name}.cpp)
  target_link_libraries(fuzz_${name} PRIVATE ${A_USES} orv_flags)
  if(ORV_FUZZ)
    target_link_options(fuzz_${name} PRIVATE -fsanitize=fuzzer)
  else()
    target_sources(fuzz_${name} PRIVATE ${CMAKE_SOURCE_DIR}/fuzz/ReplayMain.cpp)
    target_compile_options(fuzz_${name} PRIVATE ${ORV_TEST_FLAGS})
    add_test(NAME fuzz.${name}
             COMMAND fuzz_${name} ${CMAKE_SOURCE_DIR}/fuzz/corpus/${name})
  endif()
endfunction()

# orv_carried(<target> <prefix> <entries of a .qrc> <files>): an object library of files as resources,
# which nobody refers to by name. They don't go through the compiler, which takes a second for each
# 200 KB of numbers: the assembler includes them.
function(orv_carried target prefix entries)
  set(list ${CMAKE_CURRENT_BINARY_DIR}/${target}.qrc)
  file(CONFIGURE OUTPUT ${list} CONTENT
       "<RCC>\n  <qresource prefix=\"${prefix}\">\n${entries}  </qresource>\n</RCC>\n")
  set(ORV_CARRIED ${target})
  set(ORV_CARRIED_FILE ${CMAKE_CURRENT_BINARY_DIR}/${target}.rcc)
  add_custom_command(OUTPUT ${ORV_CARRIED_FILE}
                     COMMAND Qt5::rcc --binary --output ${ORV_CARRIED_FILE} ${list}
                     DEPENDS ${list} ${ARGN} VERBATIM)
  set(source ${CMAKE_CURRENT_BINARY_DIR}/${target}.cpp)
  configure_file(${CMAKE_SOURCE_DIR}/cmake/Carried.cpp.in ${source} @ONLY)
  set_source_files_properties(${source} PROPERTIES OBJECT_DEPENDS ${ORV_CARRIED_FILE})
  add_library(${target} OBJECT ${source})
  target_link_libraries(${target} PUBLIC Qt5::Core)
endfunction()
