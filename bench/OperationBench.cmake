add_executable(OperationBench ${CMAKE_CURRENT_LIST_DIR}/OperationBench.cpp)
target_link_libraries(OperationBench PRIVATE RenameEngine BenchSupport benchmark::benchmark
                      benchmark::benchmark_main tessane_warnings)
