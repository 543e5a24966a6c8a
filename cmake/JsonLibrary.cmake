# The system's nlohmann-json; otherwise a release of it, as on a Mac that has only
# Apple's tools. -DFETCHCONTENT_SOURCE_DIR_JSON=FOLDER takes it from a folder instead of
# the network.
find_package(nlohmann_json 3.11 QUIET)
if(NOT nlohmann_json_FOUND)
  include(FetchContent)
  FetchContent_Declare(json SYSTEM
    URL https://github.com/nlohmann/json/releases/download/v3.11.3/json.tar.xz
    URL_HASH SHA256=d6c65aca6b1ed68e7a182f4757257b107ae403032760ed6ef121c9d55e81757d
    DOWNLOAD_EXTRACT_TIMESTAMP OFF)
  FetchContent_MakeAvailable(json)
endif()
