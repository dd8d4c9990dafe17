/* The stored transfer curves, embedded as they are. The assembler checks the length of each, so that a file of
   the wrong size stops the build. */

#if defined(_WIN32)
        .section .rdata,"dr"
#else
        .section .rodata
#endif

.macro embed file, values
1:
        .incbin "\file"
2:
.if (2b - 1b) - \values * 8
        .error "\file has the wrong length"
.endif
.endm

.macro table name
        .balign 8
        .globl \name
#if defined(__ELF__)
        .hidden \name
        .type \name, %object
#endif
\name:
.endm

        table thudforgeCurvePublicEnemy
        embed data/curves/public-enemy.raw, 512

        table thudforgeCurveThrashcore
        embed data/curves/thrashcore.raw, 512

#if defined(__ELF__)
        .section .note.GNU-stack,"",%progbits
#endif
