# Uses the package as an outside project does. Run by ctest as
#   cmake -DBUILD_DIR=... -DSOURCE_DIR=<examples> -DWORK_DIR=... -DCXX_COMPILER=...
#         -DGENERATOR=... -P ConsumerTest.cmake
# It installs the build into a fresh prefix, configures and builds examples/ against
# that prefix alone, and runs the programs with nothing on the loader's path. Then it
# moves the prefix and runs the installed tool from its new folder: the installed
# libraries and the tool find their siblings by a relative run path, wherever they are.

foreach(var BUILD_DIR SOURCE_DIR WORK_DIR CXX_COMPILER GENERATOR)
    if(NOT DEFINED ${var})
        message(FATAL_ERROR "ConsumerTest.cmake needs -D${var}=...")
    endif()
endforeach()

# run(<what> <command>...): runs a command with the loader's path emptied, fails loudly.
function(run what)
    execute_process(COMMAND ${CMAKE_COMMAND} -E env --unset=LD_LIBRARY_PATH ${ARGN}
        RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "${what} failed (${status}):\n${ARGN}\n${out}\n${err}")
    endif()
    set(run_output "${out}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${WORK_DIR})
# A space in the folder names keeps every path honest.
set(prefix "${WORK_DIR}/first prefix")
set(moved "${WORK_DIR}/moved prefix")
set(consumer "${WORK_DIR}/consumer")

run("install" ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})

# The package's users need only what the public headers include: ICU stays private to
# the shared libraries, so the installed package must not ask for it.
file(GLOB package_files "${prefix}/lib*/cmake/ZelvorDataType/*.cmake")
foreach(file ${package_files})
    file(READ ${file} text)
    if(text MATCHES "ICU::|find_dependency")
        message(FATAL_ERROR "${file} asks its users for ICU")
    endif()
endforeach()

run("configure examples/" ${CMAKE_COMMAND} -S ${SOURCE_DIR} -B ${consumer} -G ${GENERATOR}
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_CXX_COMPILER=${CXX_COMPILER}
    -DCMAKE_BUILD_TYPE=Release)
run("build examples/" ${CMAKE_COMMAND} --build ${consumer})
run("the first program, linked to Zelvor::DataType alone" ${consumer}/first_program)
if(NOT run_output MATCHES "59.97")
    message(FATAL_ERROR "first_program printed:\n${run_output}")
endif()
run("the tour" ${consumer}/zelvor_tour)
# Built only where unixODBC and SQLite's ODBC driver are installed.
if(EXISTS ${consumer}/database)
    run("the database example" ${consumer}/database)
    if(NOT run_output MATCHES "3 of 3 entries came back exactly")
        message(FATAL_ERROR "the database example printed:\n${run_output}")
    endif()
endif()

file(RENAME ${prefix} ${moved})
run("the installed tool, moved" ${moved}/bin/zelvor decimal 19.99 x 3)
if(NOT run_output MATCHES "= 59.97")
    message(FATAL_ERROR "the moved tool printed:\n${run_output}")
endif()
file(REMOVE_RECURSE ${WORK_DIR})
