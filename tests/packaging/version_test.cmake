# Configures the project as another version, and checks that everything that names a
# version has followed.
cmake_minimum_required(VERSION 3.25)
set(version 12.34.56)
set(pattern 12[.]34[.]56)

# Replaces the version in project().
file(REMOVE_RECURSE ${FOLDER})
file(WRITE ${FOLDER}/version.cmake "
foreach(name PROJECT_VERSION Vembrix_VERSION CMAKE_PROJECT_VERSION)
  set(\${name} ${version})
endforeach()")
execute_process(
  COMMAND ${CMAKE_COMMAND} -S ${SOURCE} -B ${FOLDER}/build -G ${GENERATOR}
    -D CMAKE_PROJECT_Vembrix_INCLUDE=${FOLDER}/version.cmake
    -D BUILD_TESTING=OFF -D VEMBRIX_PLATFORM=${PLATFORM}
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)

# expect(FILE PATTERN [TIMES]): the file names the version that many times, once by default.
function(expect file expected)
  set(times 1)
  if(ARGC GREATER 2)
    set(times ${ARGV2})
  endif()
  file(READ ${file} text)
  string(REGEX MATCHALL "${expected}" found "${text}")
  list(LENGTH found count)
  if(NOT count EQUAL times)
    message(SEND_ERROR "${file} has ${expected} ${count} times, not ${times}")
  endif()
endfunction()

set(built ${FOLDER}/build/packaging)
expect(${built}/homebrew/vembrix.rb "version \"${pattern}\"")
if(PLATFORM STREQUAL "linux")
  expect(${built}/linux/vembrix.1 "\"Vembrix ${pattern}\"")
  expect(${built}/linux/com.vembrix.app.metainfo.xml "<release [^>]*version=\"${pattern}\"")
  expect(${built}/linux/debian/changelog.Debian "vembrix [(]${pattern}-1[)]")
  expect(${FOLDER}/build/CPackConfig.cmake "CPACK_PACKAGE_VERSION \"${pattern}\"")
  # The About page reads the version from Bundle.cpp.
  expect(${FOLDER}/build/compile_commands.json "VEMBRIX_VERSION=[\\\"]*${pattern}[\\\"]")
endif()
if(PLATFORM STREQUAL "macos")
  expect(${FOLDER}/build/Info.plist "<string>${pattern}</string>" 2)
else()
  # Generated on macOS only.
  expect(${SOURCE}/packaging/macos/Info.plist.in "<string>@PROJECT_VERSION@</string>" 2)
endif()
