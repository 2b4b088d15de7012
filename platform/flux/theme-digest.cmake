# Writes down which theme a library was built with: cmake -DTHEME=FILE -DHEADER=FILE -P theme-digest.cmake
file(SHA256 ${THEME} digest)
file(SIZE ${THEME} size)
file(CONFIGURE OUTPUT ${HEADER} @ONLY CONTENT
    "#pragma once\n#define ORBIS_THEME_DIGEST \"@digest@\"\n#define ORBIS_THEME_SIZE @size@\n")
