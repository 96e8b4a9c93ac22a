# Run as `cmake -DLIBRARY=libkq_pdt.so -P`: fails if the shared library needs more than the standard library of the
# language, or shows a name that isn't ours.
execute_process(COMMAND readelf -d ${LIBRARY} OUTPUT_VARIABLE dynamic COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "\\(NEEDED\\)[^\n]*\\[[^]\n]*\\]" rows "${dynamic}")
foreach(row IN LISTS rows)
  string(REGEX REPLACE ".*\\[(.*)\\]" "\\1" needed "${row}")
  if(NOT needed MATCHES "^(libstdc\\+\\+|libm|libgcc_s|libc|ld-linux[-_a-z0-9]*)\\.so")
    message(SEND_ERROR "needs ${needed}")
  endif()
endforeach()

execute_process(COMMAND nm -D -C --defined-only ${LIBRARY} OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^\n]+" symbols "${symbols}")
list(LENGTH symbols count)
if(count LESS 10)
  message(SEND_ERROR "shows only ${count} names")
endif()
# The toolkit's names have no namespace.
set(toolkit AdvanceTimers DoMessageBox2 EventSource ForgetTimer GetText[DW] GetWorkArea LoopWindow MakeEvent NextTimerIn
            ProcessEvents RegisterTimer RunLoop Send Set[A-Z][A-Za-z]* SettingsStore UseManualTimers WaitForEvent)
list(JOIN toolkit "|" toolkit)
foreach(symbol IN LISTS symbols)
  string(REGEX REPLACE "^[0-9a-f]* . " "" name "${symbol}")
  if(NOT name MATCHES "^(.* for )?(kq_base|kq_cfg|kq_def|kq_drv|kq_os|kq_pdt|kq_pdt_|par_scanner)::"
     AND NOT name MATCHES "^(.* for )?C[A-Z][A-Za-z]*(::|@)" AND NOT name MATCHES "^(${toolkit})\\("
     AND NOT name MATCHES "^(CreateDriverConfigurator|KQDriverCallbackW?|OpenEditor|KQ_PDT_1)")
    message(SEND_ERROR "shows ${name}")
  endif()
endforeach()
