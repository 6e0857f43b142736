# The scanner and the grammar of the equation language, made by flex and bison in the build tree.

find_package(FLEX 2.6.4 REQUIRED)
find_package(BISON 3.8 REQUIRED)

set(ZET_GRAMMAR_DIR ${PROJECT_BINARY_DIR}/generated)
file(MAKE_DIRECTORY ${ZET_GRAMMAR_DIR})

# A conflict is an error: the table has none.
bison_target(ZetGrammar src/eqn/zet_grammar.yy ${ZET_GRAMMAR_DIR}/zet_grammar.cc
  DEFINES_FILE ${ZET_GRAMMAR_DIR}/zet_grammar.hh
  COMPILE_FLAGS "-Wall -Werror")
flex_target(ZetScanner src/eqn/zet_scanner.ll ${ZET_GRAMMAR_DIR}/zet_scanner.cc)
add_flex_bison_dependency(ZetScanner ZetGrammar)

target_sources(zet_objects PRIVATE ${BISON_ZetGrammar_OUTPUTS} ${FLEX_ZetScanner_OUTPUTS})
target_include_directories(zet_objects PRIVATE ${ZET_GRAMMAR_DIR} ${FLEX_INCLUDE_DIRS})
# Our warnings are for code that people write.
set_source_files_properties(${ZET_GRAMMAR_DIR}/zet_grammar.cc ${FLEX_ZetScanner_OUTPUTS} PROPERTIES COMPILE_OPTIONS -w)

# The generated sources alone, for tools that read the compile commands.
add_custom_target(zet_generated DEPENDS ${BISON_ZetGrammar_OUTPUTS} ${FLEX_ZetScanner_OUTPUTS})
