; temporizador.asm (16C56)
;
; Cuenta en PB tramos de 1005 ciclos con TMR0 y su divisor.
; OPTION pone TMR0 a contar ciclos de instrucción (TOCS a 0) con
; el divisor para él (PSA a 0) a 8 (PS a 2): TMR0 avanza cada 8
; ciclos y llega a 125 (7D) a los 1000.
;
; Qué mirar: con la ejecución parada, pulsa POR, elige el 16C56
; y solo entonces carga este fichero, ensambla (--->), pon un
; punto de parada en 00F y pulsa Ejecutar. "Divisor" muestra 8 y
; "Señal" F/4. En cada parada PB tiene uno más:
;
;     PB   Ciclos
;      1    1.018
;      2    2.023
;      3    3.028
;     10   10.063
;
; Los 5 ciclos de más son los que tarda el bucle en darse
; cuenta. Con un 4000 en la frecuencia, cada tramo es algo más
; de un milisegundo.

TMR0    EQU     1
STATUS  EQU     3
Z       EQU     2
PB      EQU     6
CUENTA  EQU     8
TRAMO   EQU     7D

        ORG     3FF
        GOTO    INICIO

        ORG     0
INICIO: MOVLW   2
        OPTION
        MOVLW   0
        TRIS    PB
        CLRF    CUENTA
        CLRF    PB
        CLRF    TMR0            ; y a 0 la cuenta del divisor
; El bucle dura 5 ciclos y cada valor de TMR0, 8: no se puede
; pasar de largo.
ESPERA: MOVLW   TRAMO
        SUBWF   TMR0,W
        BTFSS   STATUS,Z
        GOTO    ESPERA
        CLRF    TMR0
        INCF    CUENTA
        MOVF    CUENTA,W
        MOVWF   PB
        GOTO    ESPERA

        END
