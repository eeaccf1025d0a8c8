# Hot kernels are one source each, compiled once for every instruction set the program can choose from at
# start (base/instruction_set.h). Inside such a source `VECTOR_NAMESPACE` names the namespace to fill. These
# sources must not call templates or inline functions of the standard library: the linker keeps one copy of
# such a function for the whole program, and it could be the one compiled for a processor the user lacks.
#
# The level `plain` uses no processor instruction by name; it is all that processors other than x86-64 get.
set(CORVANE_VECTOR_LEVELS plain)
if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64")
  list(APPEND CORVANE_VECTOR_LEVELS sse4 avx2 avx512)
  set(CORVANE_VECTOR_FLAGS_sse4 -march=x86-64-v2)
  set(CORVANE_VECTOR_FLAGS_avx2 -march=x86-64-v3 -mprefer-vector-width=256)
  set(CORVANE_VECTOR_FLAGS_avx512 -march=x86-64-v4 -mavx512vbmi -mprefer-vector-width=512)
endif()

foreach(level ${CORVANE_VECTOR_LEVELS})
  add_library(vector_${level} OBJECT)
  target_include_directories(vector_${level} PRIVATE ${CMAKE_SOURCE_DIR})
  target_compile_definitions(vector_${level} PRIVATE VECTOR_NAMESPACE=vector_${level})
  # Optimized in every build type, so that tests of a debug build stay quick.
  # The compiler's own AVX-512 headers make it warn of values that are unused on purpose. Where the sanitizer
  # watched the scope of locals, arrays of vectors could not be kept in registers: minutes to compile.
  target_compile_options(vector_${level} PRIVATE ${CORVANE_VECTOR_FLAGS_${level}} -O3
                         -fno-sanitize-address-use-after-scope -Wno-maybe-uninitialized -Wno-uninitialized)
endforeach()

function(vector_sources)
  foreach(level ${CORVANE_VECTOR_LEVELS})
    foreach(source ${ARGN})
      target_sources(vector_${level} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR}/${source})
    endforeach()
  endforeach()
endfunction()

function(link_vector_sources target)
  foreach(level ${CORVANE_VECTOR_LEVELS})
    target_sources(${target} PRIVATE $<TARGET_OBJECTS:vector_${level}>)
  endforeach()
endfunction()
