# One library a folder. A library sees and links only what it names in LINKS, so the layers hold by themselves;
# scripts/check-layers reads the same calls and refuses an include that no link covers.

# cindertop_library(NAME SOURCES file... [LINKS library...])
function(cindertop_library name)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "SOURCES;LINKS")
  add_library(cindertop_${name} STATIC ${ARG_SOURCES})
  target_include_directories(cindertop_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(cindertop_${name} PUBLIC ${ARG_LINKS} PRIVATE cindertop_options)
endfunction()

# cindertop_interface(NAME [LINKS library...]): a folder of headers only.
function(cindertop_interface name)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "LINKS")
  add_library(cindertop_${name} INTERFACE)
  target_include_directories(cindertop_${name} INTERFACE ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(cindertop_${name} INTERFACE ${ARG_LINKS})
endfunction()

# cindertop_program(NAME SOURCES file... [LINKS library...])
function(cindertop_program name)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "SOURCES;LINKS")
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LINKS} cindertop_options)
endfunction()
