# The date of the build in words. CMake uses SOURCE_DATE_EPOCH instead of the clock if
# it is set, so that builds are reproducible.
string(TIMESTAMP VEMBRIX_BUILD_DATE "%Y-%m-%d %H:%M UTC" UTC)
