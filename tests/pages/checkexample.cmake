# Fails unless DOCUMENT has the content of EXAMPLE as a block of C++.
file(READ "${DOCUMENT}" document)
file(READ "${EXAMPLE}" example)
string(FIND "${document}" "```cpp\n${example}```\n" position)
if(position EQUAL -1)
    message(FATAL_ERROR "${DOCUMENT} doesn't show ${EXAMPLE} as it is")
endif()
