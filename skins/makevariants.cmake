# Writes the provider and region variants of an interface skin's template beside its
# Skin.tbt (cmake -DSKIN=<skin folder> -P makevariants.cmake). A variant is the same page
# with the one line that tells the script which station group and region it serves.
set(marker "var skinStation = { group: 'WeatherBug', international: false };")
file(READ "${SKIN}/Skin.tbt" text)
string(FIND "${text}" "${marker}" at)
if(at EQUAL -1)
  message(FATAL_ERROR "${SKIN}/Skin.tbt lacks the line: ${marker}")
endif()

foreach(variant
    "Skini WeatherBug true"
    "Skinwu WUnderground false" "Skiniwu WUnderground true"
    "Skincwop CWOP false" "Skinicwop CWOP true"
    "Skinnws NWS false" "Skininws NWS true")
  string(REPLACE " " ";" parts "${variant}")
  list(GET parts 0 name)
  list(GET parts 1 group)
  list(GET parts 2 international)
  string(REPLACE "${marker}"
    "var skinStation = { group: '${group}', international: ${international} };"
    page "${text}")
  file(WRITE "${SKIN}/${name}.tbt" "${page}")
endforeach()
