# Applying a batch of 10,000 moves on a real folder, against a bare loop of renameat2 calls.
add_executable(RenameBench ${CMAKE_CURRENT_LIST_DIR}/RenameBench.cpp)
target_link_libraries(RenameBench PRIVATE RenameIO BenchSupport benchmark::benchmark
                      benchmark::benchmark_main tessane_warnings)
