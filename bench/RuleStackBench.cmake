add_executable(RuleStackBench ${CMAKE_CURRENT_LIST_DIR}/RuleStackBench.cpp)
target_link_libraries(RuleStackBench PRIVATE RenameEngine BenchSupport benchmark::benchmark
                      benchmark::benchmark_main tessane_warnings)
