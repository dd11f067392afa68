# What a build of the program and its library of windows have in common: a hash of the sources of both, and of what
# compiles them. The same sources give the same identity on every machine.
#
# cindertop_build_identity(HEADER): makes the header, which defines CINDERTOP_VIEWS_INTERFACE, and the target
# cindertop_build_identity.
function(cindertop_build_identity header)
  set(folders support platform thermal context cpu assistant persistence app ui)
  list(TRANSFORM folders PREPEND ${PROJECT_SOURCE_DIR}/src/)
  set(patterns)
  foreach(folder IN LISTS folders)
    list(APPEND patterns ${folder}/*.h ${folder}/*.cpp ${folder}/*.qml)
  endforeach()
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${patterns})
  set(write ${CMAKE_COMMAND} -D "HEADER=${header}" -D "ROOT=${PROJECT_SOURCE_DIR}" -D "PATTERNS=${patterns}"
    -D "FACTS=${PROJECT_VERSION} Qt ${Qt6_VERSION} ${CMAKE_CXX_COMPILER_ID} ${CMAKE_CXX_COMPILER_VERSION} ${CMAKE_BUILD_TYPE} ${CMAKE_SYSTEM_PROCESSOR} ${CINDERTOP_SANITIZERS}"
    -P ${PROJECT_SOURCE_DIR}/cmake/WriteBuildIdentity.cmake)
  # clang-tidy reads a folder that was only configured.
  execute_process(COMMAND ${write} COMMAND_ERROR_IS_FATAL ANY)
  add_custom_command(OUTPUT ${header}
    COMMAND ${write}
    DEPENDS ${sources} ${PROJECT_SOURCE_DIR}/cmake/WriteBuildIdentity.cmake
    VERBATIM)
  add_custom_target(cindertop_build_identity DEPENDS ${header})
endfunction()
