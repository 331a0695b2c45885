# The bundle's pictures, drawn from their SVG masters at 1x and, as name@2x, at 2x.
#
# A picture is a row: the file name that the code asks for, its master, and the style that makes this picture of it
# (which parts are hidden, which colour the paper has). A master is a whole drawing that any editor shows; a family of
# pictures is one master and a row for each of them, or a loop over the colours.
find_program(RSVG_CONVERT rsvg-convert REQUIRED)
find_program(IMAGEMAGICK_CONVERT convert PATHS /usr/bin NO_DEFAULT_PATH REQUIRED)

function(tavro_picture file master style)
  set(svg ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/${master}.svg)
  set(css ${CMAKE_CURRENT_BINARY_DIR}/pictures/${file}.css)
  file(CONFIGURE OUTPUT ${css} CONTENT "${style}\n" @ONLY)
  string(REGEX REPLACE "^(.*)(\\.[a-z]+)$" "\\1@2x\\2" dense "${file}")
  set(commands)
  foreach(scale IN ITEMS 1 2)
    set(name ${file})
    if(scale EQUAL 2)
      set(name ${dense})
    endif()
    set(out ${TAVRO_RESOURCES}/${name})
    set(draw COMMAND ${RSVG_CONVERT} --zoom ${scale} --stylesheet ${css} --output)
    if(file MATCHES "\\.gif$")
      # A GIF's pixel is there or it is not. Without dithering flat colours stay flat.
      set(png ${CMAKE_CURRENT_BINARY_DIR}/pictures/${name}.png)
      list(APPEND commands ${draw} ${png} ${svg}
        COMMAND ${IMAGEMAGICK_CONVERT} ${png} -channel A -threshold 50% +channel +dither -strip ${out})
    else()
      list(APPEND commands ${draw} ${out} ${svg})
    endif()
  endforeach()
  cmake_path(GET file PARENT_PATH folder)
  file(MAKE_DIRECTORY ${TAVRO_RESOURCES}/${folder} ${CMAKE_CURRENT_BINARY_DIR}/pictures/${folder})
  add_custom_command(OUTPUT ${TAVRO_RESOURCES}/${file} ${TAVRO_RESOURCES}/${dense} ${commands}
    DEPENDS ${svg} ${css} COMMENT "Drawing ${file}" VERBATIM)
  set_property(GLOBAL APPEND PROPERTY TAVRO_STAGED_FILES ${TAVRO_RESOURCES}/${file} ${TAVRO_RESOURCES}/${dense})
endfunction()

#             file                    master          style
tavro_picture("MacUp.png"             chevron         ".down { display: none }")
tavro_picture("MacDown.png"           chevron         ".up { display: none }")
tavro_picture("TavroLogo.gif"         tavro-logo      "")
tavro_picture("VelmoraLogo.gif"       velmora-logo    "")

# The device, with two trays or four and each finisher. What is narrower than the picture stands in its middle.
foreach(trays IN ITEMS 2 4)
  set(other_2 .trays-3-4)
  set(other_4 .cabinet)
  set(hidden ${other_${trays}})
  tavro_picture("Str_${trays}T.gif"         device "${hidden}, .lcss, .hcss, .booklet { display: none }
.device { transform: translate(46px, 0) }")
  tavro_picture("Str_${trays}T_LCSS.gif"    device "${hidden}, .hcss, .booklet { display: none }
.device { transform: translate(10px, 0) }")
  tavro_picture("Str_${trays}T_HCSS.gif"    device "${hidden}, .lcss, .booklet { display: none }")
  tavro_picture("Str_${trays}T_HCSS+BK.gif" device "${hidden}, .lcss { display: none }")
endforeach()
