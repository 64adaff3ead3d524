; despertar.asm                                                     12C508
;
; Duerme hasta que cambia una patilla. Con /GPWU a 0 en OPTION, un cambio en
; GP0, GP1 o GP3 despierta al 12C508 con un reset y GPWUF a 1. El registro 07
; cuenta los despertares y GP2 muestra su bit 0.
;
; Qué mirar: elija el 12C508, ensamble y pulse Ejecutar. Se marca SLEEP a los
; 16 ciclos. Pulse la casilla 0 de GPIO: el programa despierta, el registro 07
; pasa a 01, GP2 se enciende y vuelve a dormir a los 18 ciclos del nuevo reset.
; Con GP1 y GP3 pasa lo mismo; GP2, GP4 y GP5 son salidas y no se pueden pulsar.

STATUS  EQU     3
GPWUF   EQU     7               ; bit de STATUS: despertó una patilla
OSCCAL  EQU     5
GPIO    EQU     6
LED     EQU     2               ; GP2
VECES   EQU     7               ; sin puerto C, 07 es un registro general

        ORG     1FF             ; la última palabra de un 12C508 de verdad trae
        MOVLW   70              ; la calibración del oscilador, y se sigue en 0

        ORG     0
INICIO: MOVWF   OSCCAL
        BTFSS   STATUS,GPWUF
        GOTO    PRIMERA
        BCF     STATUS,GPWUF
        INCF    VECES
        GOTO    SIGUE
PRIMERA:
        CLRF    VECES
SIGUE:  MOVLW   4F              ; /GPWU a 0, TOCS a 0 para que GP2 sea patilla
        OPTION
        MOVLW   0B              ; entradas GP0, GP1 y GP3
        TRIS    GPIO
        BCF     GPIO,LED
        BTFSC   VECES,0
        BSF     GPIO,LED
        MOVF    GPIO,W          ; en un chip de verdad hay que leer las patillas
        SLEEP                   ; antes de dormir: cuenta el cambio desde aquí

        END

