# Each fuzz_NAME.cpp is one target. With CORVANE_FUZZ it becomes the fuzzer fuzz_NAME; in every build a fixed
# corpus of damaged files is fed to it as the test replay_NAME.
file(GLOB fuzz_files CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/fuzz_*.cpp)
if(fuzz_files)
  add_executable(make_corpus make_corpus.cpp)
  target_link_libraries(make_corpus PRIVATE corvane_test_support)
endif()
foreach(source ${fuzz_files})
  get_filename_component(target ${source} NAME_WE)
  string(REPLACE fuzz_ "" kind ${target})
  set(corpus ${CMAKE_BINARY_DIR}/corpus/${kind})
  add_custom_command(OUTPUT ${corpus}.stamp
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${corpus}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${corpus}
    COMMAND make_corpus ${kind} ${corpus}
    COMMAND ${CMAKE_COMMAND} -E touch ${corpus}.stamp
    DEPENDS make_corpus VERBATIM)
  add_executable(replay_${kind} replay_corpus.cpp ${source} ${corpus}.stamp)
  target_link_libraries(replay_${kind} PRIVATE corvane_test_support)
  add_test(NAME replay_${kind} COMMAND replay_${kind} ${corpus})
  if(CORVANE_FUZZ)
    add_executable(${target} ${source} ${corpus}.stamp)
    target_link_libraries(${target} PRIVATE corvane_test_support)
    target_link_options(${target} PRIVATE -fsanitize=fuzzer)
  endif()
endforeach()
