; despertar.asm (12C508)
;
; Duerme hasta que cambia un pin. Con /GPWU a 0 en OPTION, un
; cambio en GP0, GP1 o GP3 despierta al 12C508 con un reset y
; GPWUF a 1. El registro 07 cuenta los despertares y GP2 muestra
; su bit 0.
;
; Qué mirar: con la ejecución parada, pulsa POR, elige el 12C508
; y solo entonces carga este fichero, ensambla (--->) y pulsa
; Ejecutar. Se marca SLEEP a los 16 ciclos. Pulsa la casilla 0
; de GPIO: el programa despierta, el registro 07 pasa a 01, GP2
; se enciende y vuelve a dormir a los 18 ciclos del nuevo reset.
; Con GP1 y GP3 pasa lo mismo; GP2, GP4 y GP5 son salidas y no
; se pueden pulsar.

STATUS  EQU     3
GPWUF   EQU     7               ; en STATUS, despertó un pin
OSCCAL  EQU     5
GPIO    EQU     6
LED     EQU     2               ; GP2
VECES   EQU     7               ; sin puerto C, 07 es general

; La última palabra de un 12C508 de verdad trae la calibración
; del oscilador, y se sigue en 0.
        ORG     1FF
        MOVLW   70

        ORG     0
INICIO: MOVWF   OSCCAL
        BTFSS   STATUS,GPWUF
        GOTO    PRIMERA
        BCF     STATUS,GPWUF
        INCF    VECES
        GOTO    SIGUE
PRIMERA:
        CLRF    VECES
SIGUE:  MOVLW   4F              ; /GPWU a 0; TOCS a 0 (GP2, pin)
        OPTION
        MOVLW   0B              ; entradas GP0, GP1 y GP3
        TRIS    GPIO
        BCF     GPIO,LED
        BTFSC   VECES,0
        BSF     GPIO,LED
; En un chip de verdad hay que leer los pines antes de dormir:
; cuenta el cambio desde aquí.
        MOVF    GPIO,W
        SLEEP

        END

