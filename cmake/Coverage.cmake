# The target `coverage`: runs all tests and reports which lines of the six modules they reached.
find_program(GCOVR gcovr REQUIRED)

add_custom_target(coverage
  COMMAND find ${CMAKE_BINARY_DIR} -name *.gcda -delete
  COMMAND ${CMAKE_CTEST_COMMAND} --output-on-failure --parallel 2
  COMMAND ${GCOVR} --root ${CMAKE_SOURCE_DIR} --object-directory ${CMAKE_BINARY_DIR}
    --filter ${CMAKE_SOURCE_DIR}/app/ --filter ${CMAKE_SOURCE_DIR}/awareness/
    --filter ${CMAKE_SOURCE_DIR}/capture/ --filter ${CMAKE_SOURCE_DIR}/dashboard/
    --filter ${CMAKE_SOURCE_DIR}/face_pipeline/ --filter ${CMAKE_SOURCE_DIR}/probes/
    --txt ${CMAKE_BINARY_DIR}/coverage.txt --html-details ${CMAKE_BINARY_DIR}/coverage.html
  COMMAND ${CMAKE_COMMAND} -E cat ${CMAKE_BINARY_DIR}/coverage.txt
  WORKING_DIRECTORY ${CMAKE_BINARY_DIR}
  USES_TERMINAL VERBATIM)

get_property(test_programs GLOBAL PROPERTY HALCYRA_TEST_PROGRAMS)
add_dependencies(coverage ${test_programs})
