# Checks that the marked lines of a snippet stand in the README as they are compiled.
# Arguments: SNIPPET, README.

file(READ ${SNIPPET} snippet)
file(READ ${README} readme)

string(REGEX MATCH "    // README begin\n(.*)    // README end\n" ignored "${snippet}")
set(code "${CMAKE_MATCH_1}")
string(REGEX REPLACE "^    " "" code "${code}")
string(REPLACE "\n    " "\n" code "${code}")

if(code STREQUAL "")
  message(FATAL_ERROR "${SNIPPET} has no lines between \"// README begin\" and \"// README end\"")
endif()
string(FIND "${readme}" "```cpp\n${code}```\n" place)
if(place EQUAL -1)
  message(FATAL_ERROR "${README} does not show these lines of ${SNIPPET}:\n${code}")
endif()
