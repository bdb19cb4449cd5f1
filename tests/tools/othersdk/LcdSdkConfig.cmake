# A widget and a translation library made by somebody else, from the contract alone: nothing in these headers is named
# as in the reference SDK unless the contract names it.
set(other "${CMAKE_CURRENT_LIST_DIR}")

add_library(othersdk_mirel INTERFACE)
add_library(LcdSdk::mirel ALIAS othersdk_mirel)
target_include_directories(othersdk_mirel INTERFACE "${other}/include")
target_link_libraries(othersdk_mirel INTERFACE Qt5::Widgets)

qt5_wrap_cpp(othersdk_moc "${other}/include/lcd/widget/factorytestframe.h")
add_library(lcdwidgets SHARED "${other}/widgets.cpp" ${othersdk_moc})
add_library(vttranslate SHARED "${other}/vttranslate.cpp")
add_library(lcdtranslator SHARED "${other}/lcdtranslator.cpp")
foreach(library lcdwidgets vttranslate lcdtranslator)
    target_compile_features(${library} PUBLIC cxx_std_17)
    target_link_libraries(${library} PUBLIC othersdk_mirel)
    set_target_properties(${library} PROPERTIES POSITION_INDEPENDENT_CODE ON)
endforeach()
target_link_libraries(lcdtranslator PRIVATE vttranslate)

add_library(LcdSdk::widgets ALIAS lcdwidgets)
add_library(othersdk_translator INTERFACE)
target_link_libraries(othersdk_translator INTERFACE lcdtranslator vttranslate)
add_library(LcdSdk::translator ALIAS othersdk_translator)
