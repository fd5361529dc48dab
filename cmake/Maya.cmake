# The Maya plug-in's host: the interface of a devkit, or the stand-in that the tests use.

set(MAYA_DEVKIT "" CACHE PATH
    "Folder of a Maya devkit (include/maya in it): builds the plug-in alone, for that Maya")
set(MAYA_QT "" CACHE PATH
    "Folder of the Qt that this Maya has, where the devkit has none: the one with lib/cmake/Qt5")
option(MAYA_OLD_ABI "For a Maya whose own C++ library has the ABI of before GCC 5" OFF)

# What sources that use the host's interface link.
add_library(maya_api INTERFACE)
if(NOT MAYA_DEVKIT)
  target_link_libraries(maya_api INTERFACE mayahost)
  return()
endif()

if(NOT EXISTS ${MAYA_DEVKIT}/include/maya/MFnPlugin.h)
  message(FATAL_ERROR "MAYA_DEVKIT is no devkit: ${MAYA_DEVKIT}/include/maya/MFnPlugin.h is missing")
endif()
# The plug-in runs within the host's Qt: built with another one, such as the system's, it would
# crash there.
set(roots ${MAYA_DEVKIT})
if(MAYA_QT)
  set(roots ${MAYA_QT})
endif()
file(GLOB found ${roots}/lib/cmake/Qt5 ${roots}/lib/*/cmake/Qt5 ${roots}/cmake/Qt5)
list(LENGTH found count)
if(count EQUAL 0)
  message(FATAL_ERROR "${roots} has no lib/cmake/Qt5: unpack the devkit's Qt there, or set MAYA_QT to "
                      "the Qt that Maya was built with")
endif()
list(GET found 0 found)
set(maya_qt ${found})
set(Qt5_DIR ${maya_qt} CACHE PATH "" FORCE)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
if(MAYA_OLD_ABI)
  add_compile_definitions(_GLIBCXX_USE_CXX11_ABI=0)
endif()
target_include_directories(maya_api SYSTEM INTERFACE ${MAYA_DEVKIT}/include)
if(WIN32)
  target_compile_definitions(maya_api INTERFACE NT_PLUGIN)
else()
  target_compile_definitions(maya_api INTERFACE LINUX LINUX_64 _BOOL REQUIRE_IOSTREAM)
endif()
foreach(name OpenMaya OpenMayaAnim OpenMayaUI Foundation)
  find_library(MAYA_LIBRARY_${name} ${name} PATHS ${MAYA_DEVKIT}/lib NO_DEFAULT_PATH)
  # On Linux the host itself brings them; a devkit need not.
  if(MAYA_LIBRARY_${name})
    target_link_libraries(maya_api INTERFACE ${MAYA_LIBRARY_${name}})
  elseif(WIN32)
    message(FATAL_ERROR "${MAYA_DEVKIT}/lib has no ${name}")
  endif()
endforeach()

# orv_maya_module(): the plug-in and its module file, in build/maya/module.
function(orv_maya_module)
  get_filename_component(folder ${maya_qt} DIRECTORY)
  get_filename_component(folder ${folder} REALPATH)
  foreach(part Core Gui Widgets)
    get_filename_component(other ${Qt5${part}_DIR} REALPATH)
    string(FIND "${other}" "${folder}/" at)
    if(NOT at EQUAL 0)
      message(FATAL_ERROR "Qt5${part} comes from ${other} and not from ${folder}")
    endif()
  endforeach()
  set(module ${CMAKE_BINARY_DIR}/module)
  add_library(OrvelRigwright MODULE
              ${CMAKE_SOURCE_DIR}/src/adaptor/maya/plugin/module/PluginMain.cpp)
  target_link_libraries(OrvelRigwright PRIVATE adaptor_maya_plugin orv_flags)
  set_target_properties(OrvelRigwright PROPERTIES PREFIX "" LIBRARY_OUTPUT_DIRECTORY
                        ${module}/plug-ins)
  if(WIN32)
    set_target_properties(OrvelRigwright PROPERTIES SUFFIX .mll)
  else()
    # Libraries of the system are in it too: none of their names may meet the host's.
    set(names ${CMAKE_SOURCE_DIR}/cmake/MayaExports.map)
    target_link_options(OrvelRigwright PRIVATE -Wl,--version-script=${names})
    set_target_properties(OrvelRigwright PROPERTIES LINK_DEPENDS ${names} BUILD_RPATH "$ORIGIN")
  endif()
  file(WRITE ${module}/OrvelRigwright.mod
       "+ MAYAVERSION:2019 OrvelRigwright ${PROJECT_VERSION} .\nplug-ins: plug-ins\n")
endfunction()
