# Writes the font sets that tests and pictures use in place of the desktop's fonts:
# for each set a fontconfig file that names the set's fonts and no others.
#
# Usage: cmake -DFONTS_FOLDER=build/fonts -P write-fonts.cmake
# or include() with FONTS_FOLDER set. It then holds SET.conf for each set, a folder of
# links SET/ and what fontconfig remembers of them. Warns of fonts that are missing.

cmake_minimum_required(VERSION 3.25)

set(template ${CMAKE_CURRENT_LIST_DIR}/fonts.conf.in)
cmake_path(ABSOLUTE_PATH FONTS_FOLDER BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR} NORMALIZE)

# Where Debian's packages have them.
set(font_folders
  /usr/share/fonts/opentype/inter
  /usr/share/fonts/truetype/dejavu
  /usr/share/fonts/truetype/jetbrains-mono
  /usr/share/fonts/truetype/noto
)

set(inter
  Inter-Regular.otf Inter-SemiBold.otf Inter-Bold.otf Inter-ExtraBold.otf Inter-Black.otf)
set(dejavu
  DejaVuSans.ttf DejaVuSans-Bold.ttf DejaVuSansMono.ttf DejaVuSansMono-Bold.ttf)
set(noto
  NotoSans-Regular.ttf NotoSans-Bold.ttf NotoSansArabic-Regular.ttf NotoSansHebrew-Regular.ttf
  NotoSansMono-Regular.ttf NotoSansMono-Bold.ttf)
set(jetbrains_mono
  JetBrainsMono-Regular.ttf JetBrainsMono-SemiBold.ttf JetBrainsMono-Bold.ttf
  JetBrainsMono-ExtraBold.ttf)

# write_font_set(NAME SANS_SERIF MONOSPACE FILE...)
function(write_font_set name sans_serif monospace)
  set(links ${FONTS_FOLDER}/${name})
  file(MAKE_DIRECTORY ${links})
  foreach(font IN LISTS ARGN)
    find_file(path NAMES ${font} PATHS ${font_folders} NO_DEFAULT_PATH NO_CACHE)
    if(NOT path)
      message(WARNING "${font} is missing: script/lib/packages.sh lists the packages of fonts")
    elseif(NOT EXISTS ${links}/${font}) # One that is there may be in use.
      file(CREATE_LINK ${path} ${links}/${font} SYMBOLIC)
    endif()
    unset(path)
  endforeach()
  set(fonts ${links})
  set(cache ${FONTS_FOLDER}/cache)
  configure_file(${template} ${FONTS_FOLDER}/${name}.conf @ONLY)
endfunction()

# What a machine has that installs what the program and the private desktop need, and
# no more.
write_font_set(installed "Inter" "DejaVu Sans Mono" ${inter} ${dejavu} NotoColorEmoji.ttf)
if(NOT ONLY_INSTALLED)
  # Fonts of other heights and widths.
  write_font_set(dejavu "DejaVu Sans" "DejaVu Sans Mono" ${dejavu})
  write_font_set(noto "Noto Sans" "Noto Sans Mono" ${noto})
  write_font_set(inter "Inter" "JetBrains Mono" ${inter} ${jetbrains_mono})
endif()
