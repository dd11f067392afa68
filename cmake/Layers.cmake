# One library a folder. A library links only what it names in LINKS. With CINDERTOP_STRICT_LAYERS, as under `make lint`,
# the compiler finds no header of another library either.

# cindertop_headers(TARGET SCOPE [ROOM...]): where the headers of this folder and its rooms are found, as
# "folder/Name.h". Strict layers give each library a folder of links to its own headers, anew whenever the build is
# configured.
function(cindertop_headers target scope)
  set(place ${PROJECT_SOURCE_DIR}/src)
  if(CINDERTOP_STRICT_LAYERS)
    set(place ${PROJECT_BINARY_DIR}/layers/${target})
    cmake_path(RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR BASE_DIRECTORY ${PROJECT_SOURCE_DIR}/src OUTPUT_VARIABLE folder)
    file(REMOVE_RECURSE ${place})
    set(patterns)
    foreach(room . ${ARGN})
      file(MAKE_DIRECTORY ${place}/${folder}/${room})
      list(APPEND patterns ${room}/*.h)
    endforeach()
    file(GLOB headers RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} ${patterns})
    foreach(header ${headers})
      file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR}/${header} ${place}/${folder}/${header} SYMBOLIC)
    endforeach()
  endif()
  target_include_directories(${target} ${scope} ${place})
endfunction()

# cindertop_library(NAME [ROOMS folder...] [HEADERS file...] [EXCEPT file...] [LINKS library...])
# All .cpp of the folder and of its ROOMS, which are folders below it. HEADERS are those that moc has to read and no .cpp is
# named after; EXCEPT are another target's.
function(cindertop_library name)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "ROOMS;HEADERS;EXCEPT;LINKS")
  list(TRANSFORM ARG_ROOMS APPEND /*.cpp OUTPUT_VARIABLE patterns)
  file(GLOB sources CONFIGURE_DEPENDS RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} *.cpp ${patterns})
  list(REMOVE_ITEM sources ${ARG_EXCEPT} main.cpp)
  add_library(cindertop_${name} STATIC ${sources} ${ARG_HEADERS})
  cindertop_headers(cindertop_${name} PUBLIC ${ARG_ROOMS})
  target_link_libraries(cindertop_${name} PUBLIC ${ARG_LINKS} PRIVATE cindertop_options)
endfunction()

# cindertop_interface(NAME [LINKS library...]): a folder of headers only.
function(cindertop_interface name)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "LINKS")
  add_library(cindertop_${name} INTERFACE)
  cindertop_headers(cindertop_${name} INTERFACE)
  target_link_libraries(cindertop_${name} INTERFACE ${ARG_LINKS})
endfunction()

# cindertop_program(NAME SOURCES file... [LINKS library...])
function(cindertop_program name)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "SOURCES;LINKS")
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LINKS} cindertop_options)
endfunction()
