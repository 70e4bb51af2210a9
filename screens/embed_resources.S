// The compiled resource script, as read-only data of the program.
    .section .rodata
    .balign 16
    .global quillmark_resources
    .global quillmark_resources_end
quillmark_resources:
    .incbin "quillmark.res"
quillmark_resources_end:
    .byte 0
    .section .note.GNU-stack, "", @progbits
