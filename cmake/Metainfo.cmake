# What software centres show. Its pictures have to be on the web: they are docs/pictures, expected below
# CINDERTOP_WEBSITE/pictures. Without a website the entry names none.
set(CINDERTOP_ON_THE_WEB "")
function(cindertop_screenshot type picture caption)
  string(APPEND CINDERTOP_ON_THE_WEB "\n    <screenshot${type}>\n      <caption>${caption}</caption>"
    "\n      <image>${CINDERTOP_WEBSITE}/pictures/${picture}.png</image>\n    </screenshot>")
  set(CINDERTOP_ON_THE_WEB "${CINDERTOP_ON_THE_WEB}" PARENT_SCOPE)
endfunction()
if(CINDERTOP_WEBSITE)
  string(APPEND CINDERTOP_ON_THE_WEB "\n  <url type=\"homepage\">${CINDERTOP_WEBSITE}</url>\n  <screenshots>")
  cindertop_screenshot(" type=\"default\"" popover-serious-light@2x
    "A hot laptop, its busiest application and what would help")
  cindertop_screenshot("" settings-monitoring-light@2x "The last hour")
  cindertop_screenshot("" settings-cpu-light@2x "Applications by their share of the processor")
  string(APPEND CINDERTOP_ON_THE_WEB "\n  </screenshots>")
endif()

set(metainfo ${PROJECT_BINARY_DIR}/generated/app.cindertop.cindertop.metainfo.xml)
configure_file(${PROJECT_SOURCE_DIR}/data/app.cindertop.cindertop.metainfo.xml.in ${metainfo} @ONLY)
install(FILES ${metainfo} DESTINATION share/metainfo)
