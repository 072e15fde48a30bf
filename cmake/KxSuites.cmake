# Run by ctest, for each GoogleTest program: makes one test of each of its suites. Tests of a suite share a process, as
# one of Wine takes five times as long to start as most tests take. Given are
#   program    what to run
#   emulator   with what, if anything
#   filter     of tests to leave out, as GoogleTest has it: -PATTERN:PATTERN...; or empty
#   prefix     of the tests' names
#   label      of the tests
#   list       file that keeps the suites until the program changes
if(NOT EXISTS "${program}")
    add_test("${prefix}not-built" "${program}")
    return()
endif()
if(NOT EXISTS "${list}" OR "${program}" IS_NEWER_THAN "${list}")
    execute_process(COMMAND ${emulator} "${program}" --gtest_list_tests "--gtest_filter=*${filter}"
        OUTPUT_VARIABLE output RESULT_VARIABLE result TIMEOUT 120)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${program} does not list its tests: ${result}\n${output}")
    endif()
    # Parameters of tests may hold what CMake takes for lists.
    string(REGEX REPLACE "#[^\n]*" "" output "${output}")
    string(REGEX MATCHALL "[^\r\n]+" lines "${output}")
    set(suites "")
    foreach(line IN LISTS lines)
        if(line MATCHES "^([A-Za-z0-9_/]+)\\. *$")
            set(suite "${CMAKE_MATCH_1}")
            list(APPEND suites "${suite}")
            set(count 0)
        elseif(line MATCHES "^  [A-Za-z0-9_]")
            math(EXPR count "${count} + 1")
            set("count_${suite}" ${count})
        endif()
    endforeach()
    set(found "")
    foreach(suite IN LISTS suites)
        # The long ones first: many tests, or many cycles.
        set(cost ${count_${suite}})
        if(suite MATCHES "Cycles")
            math(EXPR cost "${cost} + 100")
        endif()
        string(APPEND found "add_suite(\"${suite}\" ${cost})\n")
    endforeach()
    file(WRITE "${list}" "${found}")
endif()

macro(add_suite suite cost)
    add_test("${prefix}${suite}" ${emulator} "${program}" "--gtest_filter=${suite}.*${filter}")
    set_tests_properties("${prefix}${suite}" PROPERTIES LABELS "${label}" TIMEOUT 300 COST ${cost})
endmacro()
include("${list}")
