# The API reference, where Doxygen is installed: cmake --build build/dev --target docs.
find_package(Doxygen QUIET)
if(DOXYGEN_FOUND)
  add_custom_target(docs
    COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_SOURCE_DIR}/build
    COMMAND Doxygen::doxygen ${PROJECT_SOURCE_DIR}/Doxyfile
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
    COMMENT "API reference: build/docs/html/index.html"
    VERBATIM)
endif()
