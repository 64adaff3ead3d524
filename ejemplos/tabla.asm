; tabla.asm (16C57)
;
; Pasa por PB las cifras del 0 al 9 en un visor de siete
; segmentos (PB0 es el segmento a, PB6 el g). La tabla es un
; salto calculado: ADDWF sobre PCL salta tantos RETLW más allá
; como diga W, y RETLW vuelve con el dato en W.
;
; Qué mirar: con la ejecución parada, pulsa POR, elige el 16C57
; y solo entonces carga este fichero, ensambla (--->), pon un
; punto de parada en 011, donde la cifra ya está en PB, y pulsa
; Ejecutar. En cada parada el registro 08 tiene la cifra y la
; fila PB, a su lado en binario, sus segmentos:
;
;     cifra   PB         Ciclos
;       0     00111111       14
;       1     00000110       28
;       2     01011011       42
;       9     01101111      140
;       0     00111111      156
;
; Cada cifra cuesta 14 ciclos, y dos más la vuelta del 9 al 0.

PCL     EQU     2
STATUS  EQU     3
Z       EQU     2               ; en STATUS, el resultado fue 0
PB      EQU     6
CIFRA   EQU     8

        ORG     7FF
        GOTO    INICIO

; Un salto calculado deja a 0 el bit 8 de la dirección, y CALL
; también: tabla y subrutinas han de estar en las primeras 256
; palabras de su página.
        ORG     0
TABLA:  ADDWF   PCL             ; PCL ya apunta a la siguiente
        RETLW   3F              ; 0
        RETLW   06              ; 1
        RETLW   5B              ; 2
        RETLW   4F              ; 3
        RETLW   66              ; 4
        RETLW   6D              ; 5
        RETLW   7D              ; 6
        RETLW   07              ; 7
        RETLW   7F              ; 8
        RETLW   6F              ; 9

INICIO: MOVLW   0
        TRIS    PB              ; todo salidas
        CLRF    CIFRA
BUCLE:  MOVF    CIFRA,W
        CALL    TABLA
        MOVWF   PB
        INCF    CIFRA
        MOVLW   0A
        SUBWF   CIFRA,W         ; CIFRA - 10, sin tocar CIFRA
        BTFSS   STATUS,Z
        GOTO    BUCLE
        CLRF    CIFRA           ; tras el 9, el 0
        GOTO    BUCLE

        END

