# The releases, newest first, by the headings of CHANGELOG.md: "## [1.2.3] - 2026-11-22".
# A version without a heading of its own is in development, and dated by the build.
#
# Sets VEMBRIX_RELEASE_DATE, that of this version, and VEMBRIX_RELEASES, all of them as
# the metainfo lists them.
set(changelog ${PROJECT_SOURCE_DIR}/CHANGELOG.md)
set_property(DIRECTORY ${PROJECT_SOURCE_DIR} APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${changelog})
file(READ ${changelog} text)
string(REGEX MATCHALL "\n## \\[[0-9.]+\\] - [0-9-]+" headings "${text}")

set(VEMBRIX_RELEASE_DATE "")
set(VEMBRIX_RELEASES "")
foreach(heading IN LISTS headings)
  string(REGEX MATCH "\\[([0-9.]+)\\] - ([0-9-]+)" heading "${heading}")
  if(CMAKE_MATCH_1 VERSION_EQUAL PROJECT_VERSION)
    set(VEMBRIX_RELEASE_DATE ${CMAKE_MATCH_2})
  endif()
  string(APPEND VEMBRIX_RELEASES
    "\n    <release version=\"${CMAKE_MATCH_1}\" date=\"${CMAKE_MATCH_2}\"/>")
endforeach()
if(NOT VEMBRIX_RELEASE_DATE)
  string(TIMESTAMP VEMBRIX_RELEASE_DATE "%Y-%m-%d" UTC)
  string(PREPEND VEMBRIX_RELEASES
    "\n    <release type=\"development\" version=\"${PROJECT_VERSION}\" date=\"${VEMBRIX_RELEASE_DATE}\"/>")
endif()
