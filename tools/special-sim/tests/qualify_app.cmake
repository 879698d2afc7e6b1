# Runs special-sim --qualify against an application library and checks the verdict:
#   cmake -DSIM=special-sim -DAPP=lib.so -DJUNIT=out.xml -DWANT=clean|partial|crash|hang|exit|poll_hang|overlap|FAULTS_FILE
#         [-DEMULATOR=qemu-arm|-L|sysroot] [-DTIME64=ON|OFF] -P qualify_app.cmake
# clean: exit 0, every row passed or not applicable, no error or warning finding.
# partial: the same with not-applicable rows, and exit 1 with --require-all.
# crash, hang, exit: exit 1, the misbehaving row FAILED naming what happened, the
# callback, its type and the scenario line; every other row run; JUnit written.
# poll_hang: a status answer that never returns hangs every row's poll: the first row
# waits the whole row timeout, the later ones stop soon after the same callback is held.
# overlap: a crash only when two callbacks overlap: the rows alone pass, the concurrency
# rows fail with the crash on the report-status thread.
# A faults file: exit 1 and every fault in it found, by its class and field path.
# The concurrency rows run for a second each (none for the hangs).
#   cmake -DSIM=special-sim -DAPP=lib.so -DPLAIN=SCENARIO [-DEMULATOR=...] -P qualify_app.cmake
# PLAIN: a plain run of a crashing application reports the crash, then exits non-zero.
string(REPLACE "|" ";" emulator "${EMULATOR}")
if(DEFINED PLAIN)
  execute_process(COMMAND ${emulator} ${SIM} --app ${APP} ${PLAIN}
                  RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  message("${err}")
  if(rc EQUAL 0 OR NOT err MATCHES "special-sim: the application crashed: SIGSEGV \\(segmentation fault\\) in recv_msg NOLTDEVSDK_SPECIAL_ON_WAKE \\(5\\) at [^\n]*01-platform-commands.scn:[0-9]+ on the kernel message thread")
    message(FATAL_ERROR "the crash was not reported (exit ${rc})")
  endif()
  return()
endif()
file(REMOVE ${JUNIT})
# a short row timeout keeps the hang's two rows from costing every suite 20 s
set(timeout 10)
set(rows)
set(together --concurrency-s 1)
if(WANT MATCHES "hang$")
  set(timeout 2)
  set(together --concurrency-s 0)
endif()
if(WANT STREQUAL "poll_hang")
  # three rows show it; every row would cost a second more
  set(rows --row "status 12355 switch 15,status 12355 switch 613,status 12355 switch 614")
endif()
execute_process(COMMAND ${emulator} ${SIM} --qualify --app ${APP} --junit ${JUNIT} --row-timeout ${timeout} ${rows} ${together}
                RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
message("${out}${err}")
if(NOT EXISTS ${JUNIT})
  message(FATAL_ERROR "no JUnit XML in ${JUNIT}")
endif()
file(READ ${JUNIT} xml)
string(REGEX MATCHALL "<testcase " cases "${xml}")
list(LENGTH cases ncases)
if(WANT STREQUAL "poll_hang")
  set(want_rows 3)
else()
  set(want_rows 60)
endif()
if(NOT xml MATCHES "<testsuites>.*<testcase .*</testsuites>" OR ncases LESS want_rows)
  message(FATAL_ERROR "the JUnit XML in ${JUNIT} holds ${ncases} rows")
endif()

if(WANT STREQUAL "clean" OR WANT STREQUAL "partial")
  if(NOT rc EQUAL 0 OR out MATCHES "(^|\n)(FAILED|not exercised) " OR out MATCHES "\n +(error|warning) ")
    message(FATAL_ERROR "the application did not qualify clean (exit ${rc})")
  endif()
  if(NOT out MATCHES "\npassed +concurrency command\n" OR
     (WANT STREQUAL "clean" AND NOT out MATCHES "\npassed +concurrency custom\n"))
    message(FATAL_ERROR "the concurrency rows did not pass")
  endif()
  if(WANT STREQUAL "partial")
    if(NOT out MATCHES "\nnot applicable +status 12382 DB_Chime_ConnInfo\n" OR
       NOT out MATCHES "\npassed +command kCenPlt2PuWakeReq\n")
      message(FATAL_ERROR "the partial application's rows are not applicable and passed as expected")
    endif()
    execute_process(COMMAND ${emulator} ${SIM} --qualify --app ${APP} --require-all --row status
                    RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
    if(NOT rc EQUAL 1 OR NOT out MATCHES "\nFAILED +status 12382 DB_Chime_ConnInfo\n")
      message(FATAL_ERROR "--require-all did not fail the rows not supported (exit ${rc})\n${out}")
    endif()
  endif()
  return()
endif()

if(NOT rc EQUAL 1)
  message(FATAL_ERROR "the qualification exited ${rc}, not 1")
endif()
set(lost_crash "crash: SIGSEGV \\(segmentation fault\\) in recv_msg NOLTDEVSDK_SPECIAL_ON_WAKE \\(5\\) at 01-platform-commands.scn:[0-9]+ on the kernel message thread")
set(lost_exit "exit: the application ended the process \\(exit status 3\\) inside recv_msg NOLTDEVSDK_SPECIAL_ON_WAKE \\(5\\) at 01-platform-commands.scn:[0-9]+ on the kernel message thread")
set(lost_hang "hang: recv_msg NOLTDEVSDK_SPECIAL_ON_DELAY_SLEEP \\(2\\) has not returned after ${timeout} s \\(kernel message thread, 01-platform-commands.scn:[0-9]+\\)")
if(WANT STREQUAL "overlap")
  if(NOT out MATCHES "\npassed +command kCenPlt2PuWakeReq\n" OR
     NOT out MATCHES "\nFAILED +concurrency command\n    crash: SIGSEGV \\(segmentation fault\\) in get_runtime_info [^\n]* on the report-status poller")
    message(FATAL_ERROR "the crash where callbacks overlap is not the concurrency row's verdict")
  endif()
  return()
endif()
if(WANT STREQUAL "poll_hang")
  set(held "get_runtime_info NOLTDEVSDK_SPECIAL_ON_GET_BATTERY_WORK_STATUS \\(5\\)")
  if(NOT out MATCHES "\nFAILED +status 12355 switch 15\n    hang: ${held} has not returned after ${timeout} s \\(report-status poller"
     OR NOT out MATCHES "\nFAILED +status 12355 switch 614\n    hang: ${held} hung again \\(held 500 ms here")
    message(FATAL_ERROR "the hang in a status answer is not each row's verdict")
  endif()
  return()
endif()
if(DEFINED lost_${WANT})
  if(NOT out MATCHES "\nFAILED +command [^\n]+\n    ${lost_${WANT}}")
    message(FATAL_ERROR "the ${WANT} is not its row's verdict")
  endif()
  if(NOT out MATCHES "\n(passed|not exercised|not applicable) +custom voice in a burst\n")
    message(FATAL_ERROR "the rows after the ${WANT} did not run")
  endif()
  return()
endif()

file(STRINGS ${WANT} faults REGEX "^[a-z]")
foreach(fault IN LISTS faults)
  separate_arguments(words UNIX_COMMAND "${fault}")
  list(GET words 0 class)
  list(GET words 1 path)
  if(fault MATCHES " time64$" AND NOT TIME64)
    continue()
  endif()
  string(REGEX REPLACE "([][+.*()^$?|\\\\])" "\\\\\\1" path_re "${path}")
  if(NOT out MATCHES "\n +error ${class} [^\n]* ${path_re}: " AND NOT out MATCHES "\n +info ${class} [^\n]* ${path_re}: ")
    message(FATAL_ERROR "fault not found: ${class} ${path}")
  endif()
endforeach()
