#!/bin/sh
# Makes the small PDFs of this folder: NAME-pages.pdf, Letter, each page with its number.
set -eu
cd "$(dirname "$0")"
make_pdf() {
    gs -q -dBATCH -dNOPAUSE -dSAFER -sDEVICE=pdfwrite -sPAPERSIZE=letter -sOutputFile="$1" -c \
        "/Helvetica findfont 48 scalefont setfont
         1 1 $2 { 72 640 moveto (Page ) show 3 string cvs show showpage } for"
}
make_pdf two-pages.pdf 2
make_pdf ten-pages.pdf 10
