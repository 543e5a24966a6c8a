# The date of the build as people read it. CMake takes SOURCE_DATE_EPOCH in
# place of the clock where it is set, so that builds can be reproduced.
string(TIMESTAMP VEMBRIX_BUILD_DATE "%Y-%m-%d %H:%M UTC" UTC)
