; paginas.asm (12C509)
;
; Números al azar: una subrutina en la página 1 da el siguiente
; y el programa, en la página 0, los guarda en los registros con
; banco, 16 en el banco 0 y 16 en el banco 1.
;
; CALL solo lleva 8 bits de dirección y GOTO 9; el resto lo pone
; el bit PS0 de STATUS, que hay que dar antes de saltar a otra
; página y devolver después. La etiqueta de una subrutina lejana
; vale 200 y no cabe en CALL: se le da por EQU la dirección
; dentro de su página. La vuelta (RETLW) recuerda la dirección
; entera.
;
; Qué mirar: con la ejecución parada, pulsa POR, elige el 12C509
; y solo entonces carga este fichero, ensambla (--->), pon un
; punto de parada en 011 y pulsa Ejecutar. A los 523 ciclos se
; para con los bancos llenos:
;
;     banco 0   02 04 08 10 20 40 80 1D 3A 74 E8 CD 87 13 26 4C
;     banco 1   98 2D 5A B4 75 EA C9 8F 03 06 0C 18 30 60 C0 9D

INDF    EQU     0
STATUS  EQU     3
C       EQU     0
PS0     EQU     5               ; bit de página de STATUS
FSR     EQU     4
OSCCAL  EQU     5
SEMILLA EQU     8
AZAR    EQU     00              ; la 200, sin la página

        ORG     3FF
        MOVLW   70              ; calibración; se sigue en 000

        ORG     0
INICIO: MOVWF   OSCCAL
        MOVLW   1               ; cualquier semilla menos 0
        MOVWF   SEMILLA
        MOVLW   10
        MOVWF   FSR
BUCLE:  BSF     STATUS,PS0
        CALL    AZAR
        BCF     STATUS,PS0
        MOVF    SEMILLA,W
        MOVWF   INDF
        INCF    FSR
        BTFSC   FSR,4           ; bit 4 a 1, sigue en el banco
        GOTO    BUCLE
; Acabado el banco 0, FSR es 20; acabado el 1, es 0.
        BTFSS   FSR,5
        GOTO    FIN
        BSF     FSR,4           ; de 20 a 30
        GOTO    BUCLE
FIN:    GOTO    FIN

; La semilla por dos; si se sale un 1 por la izquierda, se cruza
; con 1D. Pasa por los 255 valores antes de repetir.
        ORG     200
        BCF     STATUS,C
        RLF     SEMILLA
        BTFSS   STATUS,C
        RETLW   0
        MOVLW   1D
        XORWF   SEMILLA
        RETLW   0

        END
