# The addresses at which Vembrix is published. They do not exist yet: a publisher sets
# them, here or by -D, before building packages for users. They end without a slash.
set(VEMBRIX_WEBSITE_URL "https://vembrix.app" CACHE STRING "The program's website")
set(VEMBRIX_DOWNLOAD_URL "${VEMBRIX_WEBSITE_URL}/download" CACHE STRING
  "The folder of the website that holds the packages of all releases")
set(VEMBRIX_PICTURES_URL "${VEMBRIX_WEBSITE_URL}/pictures" CACHE STRING
  "The folder of the website that holds the pictures of docs/pictures and docs/gallery")
set(VEMBRIX_CONTACT "Vembrix contributors <packages@vembrix.app>" CACHE STRING
  "Who answers for packages, as name and address of electronic mail")
