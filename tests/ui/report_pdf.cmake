# A calibration on the command line with --report, then its PDF page: the page must carry the
# calibration, a changed parameter with its bytes, and the line for a signature. Arguments: CLI,
# the ombrelay executable; PDF_TOOL, ombrelay-report-pdf; FAMILY; OUT, a folder for the files.
set(report ${OUT}/report_${FAMILY}.json)
set(pdf ${OUT}/report_${FAMILY}.pdf)
file(REMOVE ${report} ${pdf})
execute_process(COMMAND ${CLI} --sim ${FAMILY} --yes calibrate cc-offset --report ${report}
                RESULT_VARIABLE status ERROR_VARIABLE errors OUTPUT_QUIET)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "ombrelay exited with ${status}: ${errors}")
endif()
execute_process(COMMAND ${PDF_TOOL} ${report} ${report} ${pdf}
                RESULT_VARIABLE status ERROR_VARIABLE errors)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "ombrelay-report-pdf exited with ${status}: ${errors}")
endif()
execute_process(COMMAND pdfinfo ${pdf} OUTPUT_VARIABLE info RESULT_VARIABLE status)
if(NOT status EQUAL 0 OR NOT info MATCHES "Pages: +2\n")
  message(FATAL_ERROR "not a PDF of two pages, one a report: ${info}")
endif()
execute_process(COMMAND pdftotext -layout ${pdf} - OUTPUT_VARIABLE text RESULT_VARIABLE status)
# The fonts join some letters into one glyph; poppler gives them back as such.
foreach(ligature "ﬀ;ff" "ﬁ;fi" "ﬂ;fl" "ﬃ;ffi")
  list(GET ligature 0 joined)
  list(GET ligature 1 letters)
  string(REPLACE "${joined}" "${letters}" text "${text}")
endforeach()
foreach(expected "Coulomb counter offset calibration" "Dataflash bytes changed" "${PARAMETER}"
                 "No message box was shown." "Signature: ____")
  if(NOT text MATCHES "${expected}")
    message(FATAL_ERROR "the page lacks \"${expected}\":\n${text}")
  endif()
endforeach()
