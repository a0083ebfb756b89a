# The reader of machine definitions as text.

set(fuzzed_sources ${PROJECT_SOURCE_DIR}/tool/errors.cpp)
foreach(name IN ITEMS
    angle_text axis_reader derive_trees finite head_reader json_document json_view machine_reader
    machine_record machine_words machine_writer memory_stream nearest_word node_geometry trees_reader)
  list(APPEND fuzzed_sources ${PROJECT_SOURCE_DIR}/tool/machine/${name}.cpp)
endforeach()
find_package(nlohmann_json REQUIRED)  # imported targets are seen in their own folder and below

k5ax_add_fuzz_target(machine_json CASE MachineJsonReader
  SOURCES fuzz_machine_json.cpp
  LIBS k5ax_tool_objects
  FUZZED_SOURCES ${fuzzed_sources}
  FUZZED_LIBS fuzzed_k5ax nlohmann_json::nlohmann_json)
