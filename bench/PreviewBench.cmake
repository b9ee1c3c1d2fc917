add_executable(PreviewBench ${CMAKE_CURRENT_LIST_DIR}/PreviewBench.cpp)
target_link_libraries(PreviewBench PRIVATE RenameEngine BenchSupport benchmark::benchmark
                      benchmark::benchmark_main tessane_warnings)
