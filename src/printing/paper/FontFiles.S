/* The built-in font files, byte for byte, in the order of the faces in printing/Fonts.h. */

.macro font_file name, file
    .balign 16
    .global quillmere_font_\name
    .global quillmere_font_\name\()_end
quillmere_font_\name:
    .incbin "\file"
quillmere_font_\name\()_end:
    .byte 0
.endm

.section .rodata

font_file sans_regular, LiberationSans-Regular.ttf
font_file sans_bold, LiberationSans-Bold.ttf
font_file sans_italic, LiberationSans-Italic.ttf
font_file sans_bold_italic, LiberationSans-BoldItalic.ttf
font_file serif_regular, LiberationSerif-Regular.ttf
font_file serif_bold, LiberationSerif-Bold.ttf
font_file serif_italic, LiberationSerif-Italic.ttf
font_file serif_bold_italic, LiberationSerif-BoldItalic.ttf
font_file mono_regular, LiberationMono-Regular.ttf
font_file mono_bold, LiberationMono-Bold.ttf
font_file mono_italic, LiberationMono-Italic.ttf
font_file mono_bold_italic, LiberationMono-BoldItalic.ttf

#if defined(__linux__) && defined(__ELF__)
.section .note.GNU-stack, "", %progbits
#endif
