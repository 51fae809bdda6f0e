# Runs the bench unattended and checks that it leaves a PNG screenshot. Arguments: BENCH, the
# bench executable; SCREENSHOT, the file to write; BUS, the bus the gauge is on (a simulated
# MORLIN when not given); PANEL, the panel shown (calibration when not given);
# OPTIONS, further options of the bench, separated by semicolons; NO_MESSAGES, when ON, also
# checks that no message box showed and no bus transfer failed on the way.
if(NOT DEFINED PANEL)
  set(PANEL calibration)
endif()
if(DEFINED BUS)
  set(gauge --bus ${BUS})
else()
  set(gauge --sim morlin)
endif()
file(REMOVE ${SCREENSHOT})
execute_process(COMMAND ${BENCH} ${gauge} --panel ${PANEL} ${OPTIONS} --screenshot ${SCREENSHOT}
                RESULT_VARIABLE status ERROR_VARIABLE errors)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "ombrelay-bench exited with ${status}: ${errors}")
endif()
# Unattended, every box and every failed transfer is written to standard error as a line of its
# own.
if(NO_MESSAGES AND errors MATCHES "(^|\n)(message|bus): ")
  message(FATAL_ERROR "ombrelay-bench showed a message box: ${errors}")
endif()
if(NOT EXISTS ${SCREENSHOT})
  message(FATAL_ERROR "no screenshot at ${SCREENSHOT}")
endif()
file(SIZE ${SCREENSHOT} size)
file(READ ${SCREENSHOT} signature LIMIT 8 HEX)
if(size EQUAL 0 OR NOT signature STREQUAL "89504e470d0a1a0a")
  message(FATAL_ERROR "${SCREENSHOT} is not a PNG image")
endif()
