# The reader of machine definitions as text. The inputs that are kept are run through it with every compiler;
# with clang there is the fuzzer itself:
#
#   fuzz_machine_json -max_total_time=600 FOLDER tests/fuzz/machine_json
add_executable(replay_machine_json replay.cpp fuzz_machine_json.cpp)
target_compile_features(replay_machine_json PRIVATE cxx_std_17)
target_link_libraries(replay_machine_json PRIVATE k5ax_tool_objects)
k5ax_target_defaults(replay_machine_json)

file(GLOB machine_json_inputs CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/machine_json/*.json)
add_test(NAME ${K5AX_TEST_PREFIX}Fuzz.MachineJsonReaderTakesTheInputsThatAreKept
  COMMAND replay_machine_json ${machine_json_inputs})

if(CMAKE_CXX_COMPILER_ID MATCHES Clang)
  find_package(nlohmann_json REQUIRED)  # imported targets are seen in their own folder and below
  # The tool's parts once more, since the fuzzer follows the branches that are taken in them.
  set(fuzzed_sources ${PROJECT_SOURCE_DIR}/tool/errors.cpp)
  foreach(name IN ITEMS
      angle_text axis_reader derive_trees finite head_reader json_document json_view machine_reader
      machine_record machine_words machine_writer memory_stream nearest_word node_geometry trees_reader)
    list(APPEND fuzzed_sources ${PROJECT_SOURCE_DIR}/tool/machine/${name}.cpp)
  endforeach()
  add_executable(fuzz_machine_json fuzz_machine_json.cpp ${fuzzed_sources})
  target_compile_features(fuzz_machine_json PRIVATE cxx_std_17)
  target_include_directories(fuzz_machine_json PRIVATE ${PROJECT_SOURCE_DIR})
  target_link_libraries(fuzz_machine_json PRIVATE k5ax::k5ax nlohmann_json::nlohmann_json)
  k5ax_target_defaults(fuzz_machine_json)
  target_compile_options(fuzz_machine_json PRIVATE -fsanitize=fuzzer,address,undefined -fno-sanitize-recover=all)
  target_link_options(fuzz_machine_json PRIVATE -fsanitize=fuzzer,address,undefined)
endif()
