# Reading the metadata of a folder of real camera files, against the floor and two other readers.
# The comparison readers are the Debian packages exiv2 and libimage-exiftool-perl; they are needed
# only to run this benchmark (apt-get install exiv2 libimage-exiftool-perl), and their benchmarks
# are skipped when they are missing.
if(TARGET MediaMetadata)
  add_executable(MetadataBench ${CMAKE_CURRENT_LIST_DIR}/MetadataBench.cpp)
  target_link_libraries(MetadataBench PRIVATE MediaMetadata benchmark::benchmark tessane_warnings)
  target_compile_definitions(MetadataBench PRIVATE TESSANE_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
endif()
