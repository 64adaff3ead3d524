; pulsador.asm (16C55)
;
; Cuenta en el puerto C las veces que se pulsa PA0. Para contar
; una vez cada pulsación hay que esperar a que se suelte: dos
; bucles, uno por nivel.
;
; Qué mirar: con la ejecución parada, pulsa POR, elige el 16C55
; y solo entonces carga este fichero, ensambla (--->) y pulsa
; Ejecutar. Cada vez que marques la casilla 0 de PA, PC suma
; uno; al quitar la marca no pasa nada. Si ya estaba marcada, PC
; empieza en 1: ningún reset toca las casillas. PA y PB siguen
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
SUELTO: BTFSS   PA,BOTON        ; leer un puerto lee los pines
        GOTO    SUELTO
        INCF    PC
PULSADO:
        BTFSC   PA,BOTON
        GOTO    PULSADO
        GOTO    SUELTO

        END
