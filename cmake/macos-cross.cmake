# Toolchain: Vembrix.app for both processors of the Mac, built on Linux with LLVM's
# clang, lld and tools, from any macOS SDK: -DVEMBRIX_MACOS_SDK=FOLDER, or the
# environment's VEMBRIX_MACOS_SDK or SDKROOT.
set(CMAKE_SYSTEM_NAME Darwin)

set(VEMBRIX_MACOS_SDK "" CACHE PATH "The macOS SDK, or a folder laid out like one")
foreach(candidate IN ITEMS "$ENV{VEMBRIX_MACOS_SDK}" "$ENV{SDKROOT}")
  if(NOT VEMBRIX_MACOS_SDK)
    set(VEMBRIX_MACOS_SDK "${candidate}" CACHE PATH "" FORCE)
  endif()
endforeach()
# CMake's checks of the compiler are separate projects, which read this file, too.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES VEMBRIX_MACOS_SDK)
if(NOT VEMBRIX_MACOS_SDK)
  message(FATAL_ERROR "No macOS SDK: set VEMBRIX_MACOS_SDK to the folder of one, "
    "as an option of CMake (-DVEMBRIX_MACOS_SDK=...) or in the environment")
endif()
foreach(part IN ITEMS usr/include/c++/v1/version usr/lib/libSystem.tbd
    System/Library/Frameworks/AppKit.framework)
  if(NOT EXISTS "${VEMBRIX_MACOS_SDK}/${part}")
    set(wrong "${VEMBRIX_MACOS_SDK}")
    # Lets the next attempt search again.
    unset(VEMBRIX_MACOS_SDK CACHE)
    message(FATAL_ERROR "${wrong} is no macOS SDK: it has no ${part}")
  endif()
endforeach()
set(CMAKE_OSX_SYSROOT "${VEMBRIX_MACOS_SDK}" CACHE PATH "" FORCE)

# The newest clang that has its version in its name, else the one without: if both are
# installed, the plain name is often the older.
set(names)
foreach(version RANGE 30 16 -1)
  list(APPEND names clang++-${version})
endforeach()
find_program(VEMBRIX_CLANGXX NAMES ${names} clang++)
if(NOT VEMBRIX_CLANGXX)
  message(FATAL_ERROR "No clang++ on the PATH (on Debian: apt-get install clang-19 lld-19 llvm-19)")
endif()
string(REGEX MATCH "-[0-9]+$" suffix "${VEMBRIX_CLANGXX}")

# vembrix_find_tool(VARIABLE NAME PACKAGE): prefers the compiler's version.
function(vembrix_find_tool variable name package)
  find_program(${variable} NAMES ${name}${suffix} ${name})
  if(NOT ${variable})
    message(FATAL_ERROR "No ${name}${suffix} on the PATH "
      "(on Debian: apt-get install ${package}${suffix})")
  endif()
  mark_as_advanced(${variable})
endfunction()
mark_as_advanced(VEMBRIX_CLANGXX)
vembrix_find_tool(VEMBRIX_CLANG clang clang)
vembrix_find_tool(VEMBRIX_LD64 ld64.lld lld)
vembrix_find_tool(VEMBRIX_LIPO llvm-lipo llvm)
vembrix_find_tool(VEMBRIX_LIBTOOL llvm-libtool-darwin llvm)
vembrix_find_tool(CMAKE_AR llvm-ar llvm)
vembrix_find_tool(CMAKE_NM llvm-nm llvm)
vembrix_find_tool(CMAKE_RANLIB llvm-ranlib llvm)
vembrix_find_tool(CMAKE_INSTALL_NAME_TOOL llvm-install-name-tool llvm)
set(CMAKE_C_COMPILER ${VEMBRIX_CLANG})
set(CMAKE_CXX_COMPILER ${VEMBRIX_CLANGXX})
set(CMAKE_OBJCXX_COMPILER ${VEMBRIX_CLANGXX})

# The compiler starts the linker, and lipo when it compiles for two processors, by their
# names on a Mac.
set(tools ${CMAKE_BINARY_DIR}/llvm)
file(MAKE_DIRECTORY ${tools})
file(CREATE_LINK ${VEMBRIX_LD64} ${tools}/ld64.lld SYMBOLIC)
file(CREATE_LINK ${VEMBRIX_LIPO} ${tools}/lipo SYMBOLIC)
foreach(language C CXX OBJCXX)
  set(CMAKE_${language}_COMPILER_TARGET arm64-apple-macos)
  set(CMAKE_${language}_FLAGS_INIT "-B${tools}")
endforeach()
set(CMAKE_EXE_LINKER_FLAGS_INIT "-fuse-ld=lld")

# An SDK assembled from headers and stubs may lack the C and C++ runtimes. Their names
# are then left for the system to find at run time.
file(STRINGS "${VEMBRIX_MACOS_SDK}/usr/lib/libSystem.tbd" runtime REGEX "_malloc[^_a-z]" LIMIT_COUNT 1)
if(NOT runtime)
  string(APPEND CMAKE_EXE_LINKER_FLAGS_INIT " -Wl,-undefined,dynamic_lookup")
endif()

# Libraries, headers and packages come from the SDK, programs from this machine.
set(CMAKE_FIND_ROOT_PATH "${VEMBRIX_MACOS_SDK}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
