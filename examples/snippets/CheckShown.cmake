# Checks that a page shows a file whole, as a block of code.
# Arguments: SHOWN, PAGE.

file(READ ${SHOWN} text)
file(READ ${PAGE} page)
string(FIND "${page}" "\n${text}```\n" place)
if(place EQUAL -1)
  message(FATAL_ERROR "${PAGE} does not show ${SHOWN} as it is:\n${text}")
endif()
