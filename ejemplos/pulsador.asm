; pulsador.asm                                                      16C55
;
; Cuenta en el puerto C las veces que se pulsa PA0. Para contar una vez cada
; pulsación hay que esperar a que se suelte: dos bucles, uno por nivel.
;
; Qué mirar: elija el 16C55, ensamble y pulse Ejecutar. Cada vez que marque la
; casilla 0 de PA, PC suma uno; al quitar la marca no pasa nada. PA y PB siguen
; siendo entradas, que es como salen de un reset.

PA      EQU     5
PC      EQU     7
BOTON   EQU     0               ; PA0

        ORG     3FF
        GOTO    INICIO

        ORG     0
INICIO: MOVLW   0
        TRIS    PC
        CLRF    PC
SUELTO: BTFSS   PA,BOTON        ; leer un puerto da siempre las patillas
        GOTO    SUELTO
        INCF    PC
PULSADO:
        BTFSC   PA,BOTON
        GOTO    PULSADO
        GOTO    SUELTO

        END
