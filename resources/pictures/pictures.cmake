# The bundle's pictures, drawn from their SVG masters at 1x and, as name@2x, at 2x.
#
# A picture is a row: the file name that the code asks for, its master, and the style that makes this picture of it
# (which parts are hidden). A master is a whole drawing that any editor shows. A family of pictures is one master that
# shows them side by side in cells of one size, and is cut up: starting two programs for each of its pictures would take
# longer than compiling the code that shows them.
find_program(RSVG_CONVERT rsvg-convert REQUIRED)
find_program(IMAGEMAGICK_CONVERT convert PATHS /usr/bin NO_DEFAULT_PATH REQUIRED)

# tavro_pictures(master COLUMNSxROWS style file...): the files are the master's cells in reading order.
function(tavro_pictures master grid style first)
  set(svg ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/${master}.svg)
  set(work ${CMAKE_CURRENT_BINARY_DIR}/pictures/${first})
  file(CONFIGURE OUTPUT ${work}.css CONTENT "${style}\n" @ONLY)
  if(first MATCHES "\\.gif$")
    # A GIF's pixel is there or it is not. Without dithering flat colours stay flat. One palette for the whole master, because
    # finding one takes most of the time.
    set(pixels -channel A -threshold 50% +channel +dither -colors 256)
  endif()
  set(outputs)
  set(commands)
  foreach(scale IN ITEMS 1 2)
    set(drawing ${work}-${scale}x.png)
    list(APPEND commands COMMAND ${RSVG_CONVERT} --zoom ${scale} --stylesheet ${work}.css --output ${drawing} ${svg}
      COMMAND ${CMAKE_COMMAND} -E env MAGICK_THREAD_LIMIT=1 ${IMAGEMAGICK_CONVERT} ${drawing} -strip ${pixels}
      -crop ${grid}@ +repage)
    set(cell 0)
    foreach(file IN LISTS first ARGN)
      if(scale EQUAL 2)
        string(REGEX REPLACE "(\\.[a-z]+)$" "@2x\\1" file "${file}")
      endif()
      set(out ${TAVRO_RESOURCES}/${file})
      cmake_path(GET out PARENT_PATH folder)
      file(MAKE_DIRECTORY ${folder})
      list(APPEND outputs ${out})
      list(APPEND commands "(" -clone ${cell} -write ${out} +delete ")")
      math(EXPR cell "${cell} + 1")
    endforeach()
    list(APPEND commands null:)
  endforeach()
  add_custom_command(OUTPUT ${outputs} ${commands} DEPENDS ${svg} ${work}.css COMMENT "Drawing ${first}" VERBATIM)
  set_property(GLOBAL APPEND PROPERTY TAVRO_STAGED_FILES ${outputs})
endfunction()

function(tavro_picture file master style)
  tavro_pictures(${master} 1x1 "${style}" "${file}")
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

# The production printer: with four trays or eight, with catch trays, the finisher, its booklet maker, and the stacker.
foreach(trays IN ITEMS 4 8)
  set(feeder_4 ".feeder, ")
  set(feeder_8 "")
  set(hidden ${feeder_${trays}})
  set(aside_4 -20)
  set(aside_8 0)
  set(aside ${aside_${trays}})
  math(EXPR catch "${aside} + 37")
  math(EXPR finisher "${aside} + 20")
  tavro_picture("ZR840_${trays}T.gif"         device-production "${hidden}.finisher, .booklet, .stacker { display: none }
.device { transform: translate(${catch}px, 0) }")
  tavro_picture("ZR840_${trays}T_PSF.gif"     device-production "${hidden}.catch, .booklet, .stacker { display: none }
.device { transform: translate(${finisher}px, 0) }")
  tavro_picture("ZR840_${trays}T_PSF+BM.gif"  device-production "${hidden}.catch, .stacker { display: none }
.device { transform: translate(${finisher}px, 0) }")
  tavro_picture("ZR840_${trays}T_PSF+HCS.gif" device-production "${hidden}.catch, .booklet { display: none }
.device { transform: translate(${aside}px, 0) }")
  tavro_picture("ZR840_${trays}T_PSF+BM+HCS.gif" device-production "${hidden}.catch { display: none }
.device { transform: translate(${aside}px, 0) }")
endforeach()

# Paper. A colour is its name in the files, what faces the viewer, and what turns away.
set(stock_colors
  # name     front    back
  "White     #ffffff  #d9dfe5"
  "Blue      #a9cdf2  #82b0e0"
  "Yellow    #fff176  #e3cf45"
  "Green     #b2e0ae  #88c584"
  "Pink      #f9c0d0  #e698b0"
  "Clear     inherit  #b9d6e2"
  "Buff      #ecd9ae  #d1b87f"
  "Goldenrod #f0b93a  #cf9620"
  "Red       #ea6a62  #c5463f"
  "Ivory     #fcf6dc  #e2d8b2"
  "Gray      #c3c9cf  #a0a9b2"
  "Orange    #f69c4c  #d67a28")
foreach(color IN LISTS stock_colors)
  string(REGEX MATCHALL "[^ ]+" color "${color}")
  list(GET color 0 name)
  list(GET color 1 front)
  list(GET color 2 back)
  tavro_pictures(stock-paper 5x2 ".paper { fill: ${front} !important } .shade { fill: ${back} !important }"
    "SP-Envelope-${name}.gif" "SP-FullCutTab-${name}.gif" "TabStock-${name}.gif" "Side2-${name}.gif" "Standard-${name}.gif"
    "DB-${name}-Envelope.gif" "DB-FullCutTab-${name}.gif" "DB-Tab-${name}.gif"   "DB-Side2-${name}.gif" "DB-${name}.gif")
endforeach()
tavro_pictures(stock-marks 6x5 ""
  "Recycled.gif" "Labels.gif" "PunchedEnvelope.gif" "DB-Punched.gif" "DB-Pre-Printed.gif" "DB-OrderedStock.gif"
  "DB-Letterhead.gif" "DB-Other.gif" "DB-Custom1.gif" "DB-Custom2.gif" "DB-Custom3.gif" "DB-Custom4.gif"
  "DB-Custom5.gif" "DB-Custom6.gif" "DB-Custom7.gif" "SP-Heavyweight-Labels.gif" "DB-Heavyweight-Labels.gif"
  "Heavyweight.gif" "Heavyweight-Side2.gif"
  "Lightweight-Glossy.gif" "Lightweight-Glossy-Side2.gif" "Heavyweight-Glossy.gif" "Heavyweight-Glossy-Side2.gif"
  "DB-Heavyweight.gif" "DB-Heavyweight-Side2.gif"
  "DB-Lightweight-Glossy.gif" "DB-Lightweight-Glossy-Side2.gif" "DB-Heavyweight-Glossy.gif" "DB-Heavyweight-Glossy-Side2.gif")
tavro_picture("TabMarginShift.gif"    tab-shift       "")

# Special pages: what they are, which covers, which sides; and what is printed on a cover, over the pictures of paper.
tavro_pictures(special-pages 5x3 ""
  "AddCovers.gif" "AddInserts.gif" "AddExceptions.gif" "Blank.gif" "ExceptionOptions.gif"
  "None.gif" "FrontOnly.gif" "BackOnly.gif" "Same.gif" "Different.gif"
  "2-Sided-PrnDef.gif" "1 Sided.gif" "2 Sided Flip on Long Edge.gif" "2 Sided Flip on Short Edge.gif")
tavro_pictures(special-print 3x1 "" "PrintOnSide1.gif" "PrintOnSide2.gif" "PrintOnBoth.gif")

# Booklets in the panel, and once more in its dialog.
tavro_pictures(booklet 4x2 ""
  "Layout/Booklet-Portrait.gif"             "Layout/Booklet-Outlines-Portrait.gif"
  "Layout/Booklet-Fold-Portrait.gif"        "Layout/Booklet-Fold-Outlines-Portrait.gif"
  "Layout/Booklet-Fold-Staple-Portrait.gif" "Layout/Booklet-Fold-Staple-Outlines-Portrait.gif")
tavro_pictures(booklet 4x2 ""
  "Booklet Creation/Booklet.gif"             "Booklet Creation/Booklet-Outlines.gif"
  "Booklet Creation/Booklet-Fold.gif"        "Booklet Creation/Booklet-Fold-Outlines.gif"
  "Booklet Creation/Booklet-Fold-Staple.gif" "Booklet Creation/Booklet-Fold-Staple-Outlines.gif"
  "Booklet Creation/None.gif")

# Image options
tavro_pictures(image-options 4x2 ""
  "Toner-Saver-B&W.gif" "Standard-B&W.gif" "Lighten-Darken-Grayscale.gif" "Negative-&-Mirror-Image.gif"
  "Negative-Image.gif"  "Mirror-Image.gif" "Invert-Image-Off.gif"         "ImageShift.gif")

# Job notes
tavro_pictures(job-notes 2x1 "" "Banner Message.gif" "Special Instructions.gif")

# Watermark
tavro_picture("BackgroundForms.gif" background-form "")

# Job types
tavro_pictures(job-types 3x1 "" "Secure-Print.gif" "Hint.gif" "Delayed-Print.gif")

# Fax
tavro_pictures(fax 5x2 ""
  "AddRecipient.gif" "AddFromPhonebook.gif" "ConfirmationSheet.gif" "SendSpeed.gif" "Resolution.gif"
  "SendTime.gif" "DialingOptions.gif" "CoverSheet.gif" "PBEntry.gif" "PBGroup.gif")

# Finishing, named after the feature that offers it.
tavro_pictures(finishing 8x5 ""
  "Finishing/1StapleTL.gif" "Finishing/1StapleTR.gif" "Finishing/1StapleBL.gif" "Finishing/1StapleBR.gif"
  "Finishing/2StaplesT.gif" "Finishing/2StaplesR.gif" "Finishing/2StaplesB.gif" "Finishing/2StaplesL.gif"
  "Finishing/1StapleT.gif" "Finishing/1StapleR.gif" "Finishing/1StapleB.gif" "Finishing/1StapleL.gif"
  "Finishing/None.gif" "Finishing/BindLeft.gif" "Finishing/ZFoldHalfRight.gif" "Finishing/ZFoldHalfLeft.gif"
  "Finishing/2HolePunchL.gif" "Finishing/2HolePunchT.gif" "Finishing/2HolePunchR.gif" "Finishing/2HolePunchB.gif"
  "Finishing/3HolePunchL.gif" "Finishing/3HolePunchT.gif" "Finishing/3HolePunchR.gif" "Finishing/3HolePunchB.gif"
  "Finishing/4HolePunchL.gif" "Finishing/4HolePunchT.gif" "Finishing/4HolePunchR.gif" "Finishing/4HolePunchB.gif"
  "Finishing/BiFoldMultiple.gif" "Finishing/BiFoldStapleMultiple.gif"
  "Finishing/BiFoldSingleInside.gif" "Finishing/BiFoldSingleOutside.gif"
  "Finishing/CFoldSingleInside.gif" "Finishing/CFoldSingleOutside.gif"
  "Finishing/ZFoldSingleInside.gif" "Finishing/ZFoldSingleOutside.gif")
