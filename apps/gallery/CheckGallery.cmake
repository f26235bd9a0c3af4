# Inputs: GALLERY (the executable), OUTPUT (where it writes the page).
file(REMOVE "${OUTPUT}")
execute_process(COMMAND "${GALLERY}" "${OUTPUT}" RESULT_VARIABLE rc)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "tovi_gallery exited with ${rc}")
endif()
if(NOT EXISTS "${OUTPUT}")
  message(FATAL_ERROR "tovi_gallery wrote no file at ${OUTPUT}")
endif()
file(READ "${OUTPUT}" page)
if(NOT page MATCHES "^<!DOCTYPE html>" OR NOT page MATCHES "</html>\n?$")
  message(FATAL_ERROR "${OUTPUT} is not a whole HTML page")
endif()
# Each component's view type, and each theme's heading.
foreach(needle IN ITEMS
    "data-view=\"ToviButton\"" "data-view=\"ToviActionView\"" "data-view=\"AlertView\""
    "data-view=\"AlertArrowUpShape\"" "data-view=\"AlertArrowDownShape\"" "data-view=\"SheetHeader\""
    "data-view=\"ToviErrorView\"" "data-view=\"FlipWrapper\"" "data-view=\"ToviImage\""
    "class=\"nav\"" "Default theme" "Custom brand theme" "Please try again.")
  string(FIND "${page}" "${needle}" at)
  if(at EQUAL -1)
    message(FATAL_ERROR "the gallery page does not mention ${needle}")
  endif()
endforeach()
# States: loading shows a spinner; a disabled button carries the disabled attribute.
foreach(needle IN ITEMS " disabled>" "role=\"progressbar\"")
  string(FIND "${page}" "${needle}" at)
  if(at EQUAL -1)
    message(FATAL_ERROR "the gallery page lacks the state marker ${needle}")
  endif()
endforeach()
