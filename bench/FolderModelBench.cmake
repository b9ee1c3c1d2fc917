add_executable(FolderModelBench ${CMAKE_CURRENT_LIST_DIR}/FolderModelBench.cpp
                                ${PROJECT_SOURCE_DIR}/tests/MediaMetadata/Fixtures.cpp)
target_include_directories(FolderModelBench PRIVATE ${PROJECT_SOURCE_DIR}/tests)
target_link_libraries(FolderModelBench PRIVATE TessaneWorkflow PkgConfig::Exiv2 PkgConfig::LibAV
                      benchmark::benchmark benchmark::benchmark_main tessane_warnings)
