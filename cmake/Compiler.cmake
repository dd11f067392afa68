# Every target that Layers.cmake makes links cindertop_options. Packages switch the option off: another compiler may know
# other warnings.
option(CINDERTOP_WARNINGS_ARE_ERRORS "Let the build fail at a warning" ON)
add_library(cindertop_options INTERFACE)
target_compile_options(cindertop_options INTERFACE
  -Wall -Wextra -Wpedantic $<$<BOOL:${CINDERTOP_WARNINGS_ARE_ERRORS}>:-Werror>
  -Wconversion -Wsign-conversion -Wdouble-promotion
  -Wold-style-cast -Wcast-align
  -Wnon-virtual-dtor -Woverloaded-virtual -Wextra-semi
  -Wformat=2 -Wimplicit-fallthrough -Wundef)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(cindertop_options INTERFACE
    -Wduplicated-cond -Wduplicated-branches -Wlogical-op -Wsuggest-override
    -Wshadow=local) # plain -Wshadow also forbids constructor parameters named like the members that they set
else()
  # libstdc++ 12 sorts stably with a helper that it has itself declared deprecated.
  target_compile_options(cindertop_options INTERFACE -Wshadow -Wno-deprecated-declarations)
endif()
target_compile_definitions(cindertop_options INTERFACE
  $<$<CONFIG:Debug>:_GLIBCXX_ASSERTIONS>)

if(CINDERTOP_SANITIZERS)
  add_compile_options(-fsanitize=${CINDERTOP_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${CINDERTOP_SANITIZERS})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(cindertop_options INTERFACE
      -Wno-maybe-uninitialized # the checks lead it astray
      -Wno-array-bounds        # likewise, where texts are joined
      -Wno-tsan)               # Qt's own globals use a fence, which the thread sanitizer does not see
  endif()
endif()
