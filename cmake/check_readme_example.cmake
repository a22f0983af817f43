# Fails unless the README shows an example exactly as it is compiled.
file(READ "${README}" readme)
file(READ "${EXAMPLE}" example)
string(FIND "${readme}" "```cpp\n${example}```" place)
if(place EQUAL -1)
  message(FATAL_ERROR "${README} does not show ${EXAMPLE} as it is")
endif()
