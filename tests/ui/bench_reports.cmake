# The bench's calibrations pressed unattended on a simulated gauge, their reports saved: one a
# calibration, each done and with the dataflash bytes it changed (none for a pack calibration
# that has no formula on its family), and a PDF page each. Arguments:
# BENCH, the bench executable; FAMILY; OUT, a folder for the files.
set(report ${OUT}/bench_reports_${FAMILY}.json)
set(pdf ${OUT}/bench_reports_${FAMILY}.pdf)
file(REMOVE ${report} ${pdf})
execute_process(COMMAND ${BENCH} --sim ${FAMILY} --calibrate --calibrate-current
                        --report ${report} --screenshot ${OUT}/bench_reports_${FAMILY}.png
                RESULT_VARIABLE status ERROR_VARIABLE errors)
if(NOT status EQUAL 0 OR errors MATCHES "(^|\n)(message|bus): ")
  message(FATAL_ERROR "ombrelay-bench exited with ${status}: ${errors}")
endif()
file(READ ${report} json)
string(JSON count LENGTH "${json}")
if(NOT count EQUAL 5)
  message(FATAL_ERROR "${count} reports, expected one for each of the 5 calibrations")
endif()
math(EXPR last "${count} - 1")
foreach(i RANGE ${last})
  string(JSON calibration GET "${json}" ${i} calibration)
  string(JSON done GET "${json}" ${i} done)
  string(JSON changes LENGTH "${json}" ${i} dataflash_changes)
  # KELD and QUILL write their pack gain back as the gauge holds it: nothing changes.
  set(unchanged OFF)
  if(FAMILY MATCHES "^(keld|quill)$" AND calibration STREQUAL "Pack voltage calibration")
    set(unchanged ON)
  endif()
  if(NOT done OR (changes EQUAL 0) AND NOT unchanged OR (changes GREATER 0) AND unchanged)
    message(FATAL_ERROR "${calibration}: done ${done}, ${changes} bytes changed")
  endif()
endforeach()
execute_process(COMMAND pdfinfo ${pdf} OUTPUT_VARIABLE info RESULT_VARIABLE status)
if(NOT status EQUAL 0 OR NOT info MATCHES "Pages: +5\n")
  message(FATAL_ERROR "not a PDF of five pages: ${info}")
endif()
