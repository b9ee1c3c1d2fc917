# The main window under load: the longest main-thread stall while typing and while scrolling.
add_executable(WindowBench ${CMAKE_CURRENT_LIST_DIR}/WindowBench.cpp)
target_include_directories(WindowBench PRIVATE ${PROJECT_SOURCE_DIR}/tests)
target_link_libraries(WindowBench PRIVATE TessaneWindows Qt6::Test PkgConfig::Exiv2
                      tessane_warnings)
