# The pixel loops, one source per instruction set; the processor is asked at run time which one serves.
# The sets are enabled without fused multiply-add, so that all builds give the same bits. Loops are
# always compiled for speed, in debug builds too. What is left out of the semantics of the platform's
# functions is only errno and floating-point flags.
set(ZET_KERNEL_OPTIONS -O3 -fno-math-errno -fno-trapping-math)
set(ZET_KERNEL_SOURCES src/image/ZetPixelLoopsBaseline.cpp)
set_source_files_properties(src/image/ZetPixelLoopsBaseline.cpp PROPERTIES COMPILE_OPTIONS "${ZET_KERNEL_OPTIONS}")
if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64")
  list(APPEND ZET_KERNEL_SOURCES src/image/ZetPixelLoopsAvx2.cpp src/image/ZetPixelLoopsAvx512.cpp)
  set_source_files_properties(src/image/ZetPixelLoopsAvx2.cpp PROPERTIES
    COMPILE_OPTIONS "${ZET_KERNEL_OPTIONS};-mavx2")
  set_source_files_properties(src/image/ZetPixelLoopsAvx512.cpp PROPERTIES
    COMPILE_OPTIONS "${ZET_KERNEL_OPTIONS};-mavx512f;-mavx512bw;-mavx512dq;-mavx512vl;-mprefer-vector-width=512")
endif()
target_sources(zet_objects PRIVATE ${ZET_KERNEL_SOURCES})
