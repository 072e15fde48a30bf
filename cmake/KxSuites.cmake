# Run by ctest, for each GoogleTest program: makes tests of its suites. Tests of a suite share a process, and so do up to
# six small suites, as a process of Wine takes five times as long to start as most tests take. Given are
#   program    what to run
#   emulator   with what, if anything
#   filter     of tests to leave out, as GoogleTest has it: -PATTERN:PATTERN...; or empty
#   prefix     of the tests' names
#   label      of the tests
#   list       file that keeps what was found until the program, this file or what is given changes
if(NOT EXISTS "${program}")
    add_test("${prefix}not-built" "${program}")
    return()
endif()
if(NOT EXISTS "${list}" OR "${program}" IS_NEWER_THAN "${list}" OR "${CMAKE_CURRENT_LIST_FILE}" IS_NEWER_THAN "${list}"
    OR "${CMAKE_PARENT_LIST_FILE}" IS_NEWER_THAN "${list}")
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
    # Small suites wait here for others to share a process with.
    set(group "")
    set(group_size 0)
    set(group_cost 0)
    set(found "")
    macro(close_group)
        if(group)
            list(JOIN group ";" suites_of_group)
            string(APPEND found "add_suites(\"${suites_of_group}\" ${group_cost})\n")
        endif()
        set(group "")
        set(group_size 0)
        set(group_cost 0)
    endmacro()
    foreach(suite IN LISTS suites)
        set(cost ${count_${suite}})
        if(suite MATCHES "Cycles") # they count what the process holds
            math(EXPR cost "${cost} + 100")
            string(APPEND found "add_suites(\"${suite}\" ${cost})\n")
        elseif(cost GREATER 10)
            string(APPEND found "add_suites(\"${suite}\" ${cost})\n")
        else()
            math(EXPR together "${group_cost} + ${cost}")
            string(LENGTH "${group}+${suite}" length) # of the test's name
            if(group_size EQUAL 6 OR together GREATER 30 OR length GREATER 80)
                close_group()
            endif()
            list(APPEND group "${suite}")
            math(EXPR group_size "${group_size} + 1")
            math(EXPR group_cost "${group_cost} + ${cost}")
        endif()
    endforeach()
    close_group()
    file(WRITE "${list}" "${found}")
endif()

# The long ones are run first: many tests, or many cycles.
function(add_suites suites cost)
    list(JOIN suites "+" name)
    list(TRANSFORM suites APPEND ".*")
    list(JOIN suites ":" chosen)
    add_test("${prefix}${name}" ${emulator} "${program}" "--gtest_filter=${chosen}${filter}")
    set_tests_properties("${prefix}${name}" PROPERTIES LABELS "${label}" TIMEOUT 300 COST ${cost})
endfunction()
include("${list}")
