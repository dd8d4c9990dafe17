/* The editor's bitmaps and fonts, as they are. Behind thudforgeBitmaps stands one record for each bitmap: its id, where
   its file begins, counted from the record, and the file's size; an id of 0 ends the list. File names are looked up
   from the project root. */

        .section .rodata

.macro hidden name
        .balign 8
        .globl \name
        .hidden \name
        .type \name, %object
\name:
.endm

.macro bitmap id, file
        .pushsection .rodata.bitmaps, "a"
1:
        .incbin "resources/img/grimworks/\file"
2:
        .popsection
3:
        .long \id, 1b - 3b, 2b - 1b
.endm

        hidden thudforgeBitmaps
#define BITMAP(id, file, frames) bitmap id, file
#include "resources/Bitmaps.inc"
        .long 0, 0, 0

        hidden thudforgeFont
        .incbin "resources/fonts/Editor.ttf"
        hidden thudforgeFontEnd
        hidden thudforgeBoldFont
        .incbin "resources/fonts/Editor-Bold.ttf"
        hidden thudforgeBoldFontEnd

        .section .note.GNU-stack,"",%progbits
