# cmake -DSOURCE=src -DHEADER=room/File.h -DOUTPUT=folder/brisel -DSTAMP=file -P PublicHeaders.cmake
#
# Copies a header and all headers of ours that it needs as hosts see them: included as
# "brisel/room/File.h", so that no folder of a host's own stands in for a room. The header itself
# comes to lie in OUTPUT, as "brisel/File.h". A header that has not changed is not touched.

cmake_minimum_required(VERSION 3.25)
set(umbrellas component/Core.h qt/Widgets.h)

set(waiting ${HEADER})
set(copied)
while(waiting)
  list(POP_FRONT waiting header)
  if(header IN_LIST copied)
    continue()
  endif()
  list(APPEND copied ${header})
  file(READ ${SOURCE}/${header} text)
  string(REGEX MATCHALL "#include \"[a-z]+/[A-Za-z0-9_]+[.]h\"" includes "${text}")
  foreach(include IN LISTS includes)
    string(REGEX REPLACE ".*\"(.*)\"" "\\1" needed "${include}")
    list(APPEND waiting ${needed})
  endforeach()
  string(REGEX REPLACE "#include \"([a-z]+/[A-Za-z0-9_]+[.]h)\"" "#include \"brisel/\\1\"" text
                       "${text}")
  foreach(umbrella IN LISTS umbrellas)
    get_filename_component(name ${umbrella} NAME)
    string(REPLACE "\"brisel/${umbrella}\"" "\"brisel/${name}\"" text "${text}")
  endforeach()
  set(file ${OUTPUT}/${header})
  if(header IN_LIST umbrellas)
    get_filename_component(name ${header} NAME)
    set(file ${OUTPUT}/${name})
  endif()
  file(CONFIGURE OUTPUT ${file} CONTENT "@text@" @ONLY)
endwhile()
file(TOUCH ${STAMP})
