# How a test is added, in the catalogue's tree and in the demonstration's. Sanitized programs find what
# they need in the environment.
set(leaks ${CMAKE_SOURCE_DIR}/tests/support/leaks.supp)
set(TARVO_SANITIZER_OPTIONS
    "LSAN_OPTIONS=suppressions=${leaks}:print_suppressions=0;UBSAN_OPTIONS=print_stacktrace=1")

# tarvo_add_test(NAME sources... [LIBS libraries...]): a test program that runs on an invisible screen.
function(tarvo_add_test NAME)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LIBS")
    add_executable(test_${NAME} ${arg_UNPARSED_ARGUMENTS})
    target_link_libraries(test_${NAME} PRIVATE tarvo_test_support ${arg_LIBS})
    add_test(NAME ${NAME} COMMAND test_${NAME})
    set_tests_properties(${NAME} PROPERTIES ENVIRONMENT
        "QT_QPA_PLATFORM=offscreen;QTEST_DISABLE_STACK_DUMP=1;LC_ALL=C.UTF-8;${TARVO_SANITIZER_OPTIONS}")
endfunction()
