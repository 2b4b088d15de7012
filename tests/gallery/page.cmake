# SPDX-FileCopyrightText: 2026 The Tessel UI authors
# SPDX-License-Identifier: Apache-2.0

# Pictures a few states, and lets a browser without a screen run page-test.js in a copy of the page, from the file
# system. Needs GALLERY, BROWSER, SCRIPT, FOLDER.
file(REMOVE_RECURSE ${FOLDER})
execute_process(COMMAND ${GALLERY} --quiet --out ${FOLDER} --lang en,ar --contrast=both --scale 0.25,0.3
    --states guide,pin,terms OUTPUT_QUIET ERROR_QUIET RESULT_VARIABLE result)
if(result GREATER 1) # whether the pictures are good is not the question here
    message(FATAL_ERROR "the gallery failed: ${result}")
endif()
file(READ ${FOLDER}/index.html page)
file(READ ${SCRIPT} script)
file(WRITE ${FOLDER}/tested.html "${page}<script>${script}</script>")
execute_process(COMMAND ${BROWSER} --headless --no-sandbox --disable-gpu --user-data-dir=${FOLDER}/browser
    --virtual-time-budget=20000 --dump-dom file://${FOLDER}/tested.html
    OUTPUT_VARIABLE shown ERROR_QUIET TIMEOUT 120)
if(NOT shown MATCHES "data-test=\"passed\"")
    string(REGEX MATCH "data-test=\"[^\"]*\"" found "${shown}")
    message(FATAL_ERROR "the page does not work: ${found}")
endif()
