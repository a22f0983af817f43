# Fails unless a page of the documentation shows an example exactly as it is compiled.
file(READ "${PAGE}" page)
file(READ "${EXAMPLE}" example)
string(FIND "${page}" "```cpp\n${example}```" place)
if(place EQUAL -1)
  message(FATAL_ERROR "${PAGE} does not show ${EXAMPLE} as it is")
endif()
