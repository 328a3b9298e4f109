# The library shows the functions of its C interface and nothing else.
execute_process(COMMAND ${NM} -D --defined-only --extern-only ${LIBRARY}
  OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^ \n]+\n" symbols "${listing}")
set(foreign ${symbols})
list(FILTER foreign EXCLUDE REGEX "^pixvane_")
list(LENGTH symbols count)
if(foreign OR count LESS 20)
  message(FATAL_ERROR "${count} symbols, of which these are not the interface's: ${foreign}")
endif()
