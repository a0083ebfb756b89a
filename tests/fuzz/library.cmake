# The library: its loader, and sequences of calls.

# The library's sources once more, with the fuzzer's counters in them.
if(CMAKE_CXX_COMPILER_ID MATCHES Clang)
  add_library(fuzzed_k5ax OBJECT)
  k5ax_add_sources_of(fuzzed_k5ax k5ax_objects ${K5AX_GEOMETRY_TARGET} ${K5AX_STREAM_TARGET})
  find_package(Eigen3 3.3 REQUIRED NO_MODULE)
  target_include_directories(fuzzed_k5ax PUBLIC
    ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/include ${PROJECT_SOURCE_DIR}/platform/include)
  target_link_libraries(fuzzed_k5ax PUBLIC Boost::headers PRIVATE Eigen3::Eigen)
  target_compile_features(fuzzed_k5ax PRIVATE cxx_std_17)
  target_compile_definitions(fuzzed_k5ax PRIVATE K5AX_BUILDING_LIBRARY)
  k5ax_target_defaults(fuzzed_k5ax)
  k5ax_fuzz_instrument(fuzzed_k5ax fuzzer-no-link)
endif()

# The targets replace operator new, and libraries of Windows would go on with their own.
set(library k5ax::k5ax)
if(WIN32)
  set(library k5ax_objects ${K5AX_GEOMETRY_TARGET} ${K5AX_STREAM_TARGET})
endif()

k5ax_add_fuzz_target(load_machine CASE LoadingAMachine
  SOURCES fuzz_load_machine.cpp ../support/memory_shortage.cpp
  LIBS ${library}
  FUZZED_SOURCES mutate_machine.cpp
  FUZZED_LIBS fuzzed_k5ax)

k5ax_add_fuzz_target(call_sequence CASE ASequenceOfCalls
  SOURCES
    axis_calls.cpp
    fuzz_call_sequence.cpp
    host.cpp
    machine_calls.cpp
    node_calls.cpp
    pose_calls.cpp
    ../support/memory_shortage.cpp
  LIBS ${library}
  FUZZED_LIBS fuzzed_k5ax)
if(WIN32)
  foreach(name IN ITEMS load_machine call_sequence)
    target_compile_definitions(replay_${name} PRIVATE K5AX_BUILDING_LIBRARY)
    target_link_options(replay_${name} PRIVATE -static)
  endforeach()
endif()
