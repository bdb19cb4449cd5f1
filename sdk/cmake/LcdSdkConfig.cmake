include(CMakeFindDependencyMacro)
find_dependency(Qt5 5.14 COMPONENTS Core Gui Widgets Svg)
include("${CMAKE_CURRENT_LIST_DIR}/LcdSdkTargets.cmake")
