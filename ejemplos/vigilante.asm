; vigilante.asm (16C58)
;
; El watchdog y SLEEP. El programa trabaja cien vueltas
; atendiendo al watchdog con CLRWDT y luego se cuelga: sin
; CLRWDT, el watchdog desborda y provoca un reset. Tras un
; reset, /TO dice la causa (0: desbordó el watchdog). A la
; tercera vez el programa se rinde y duerme.
;
; Qué mirar: con la ejecución parada, pulsa POR, elige el 16C58
; y solo entonces carga este fichero y ensambla (--->). Deja
; marcada la casilla WDT antes del primer paso, pon puntos de
; parada en 010 y 00D y pulsa Ejecutar una y otra vez:
;
;     parada   PB   Ciclos
;     010       0       12   recién encendido: /TO a 1
;     010       1       17   tras el aviso del watchdog: /TO a 0
;     010       2       17   tras el segundo aviso
;     00D       3       16   tras el tercero: ahora viene SLEEP
;
; Ejecuta entonces un paso: SLEEP se marca, /PD queda a 0, y por
; más que pulses Ejec. 1 no pasa nada. Despiértalo con el botón
; WDT: /TO y /PD quedan a 0, y con otro Ejecutar la cuenta llega
; a 4. En el simulador el watchdog no cuenta mientras se duerme.
;
; Al acabar, pulsa POR y quita la marca de WDT: POR no la quita,
; y el watchdog reiniciaría los demás ejemplos.

STATUS  EQU     3
Z       EQU     2
TO      EQU     4
PB      EQU     6
VECES   EQU     8               ; general, sobrevive al reset
VUELTAS EQU     9

        ORG     7FF
        GOTO    INICIO

; Divisor para el watchdog (PSA a 1), a 1: desborda a los 18000
; ciclos con 4000 KHz.
        ORG     0
INICIO: MOVLW   8
        OPTION
        MOVLW   0
        TRIS    PB
        BTFSC   STATUS,TO
        GOTO    PRIMERA         ; /TO a 1, recién encendido
        INCF    VECES
        MOVF    VECES,W
        MOVWF   PB
        MOVLW   3
        SUBWF   VECES,W
        BTFSS   STATUS,Z
        GOTO    TRABAJO
        SLEEP                   ; solo se sale con un reset

PRIMERA:
        CLRF    VECES
        CLRF    PB
TRABAJO:
        MOVLW   64              ; cien
        MOVWF   VUELTAS
ATIENDE:
        CLRWDT
        DECFSZ  VUELTAS
        GOTO    ATIENDE
COLGADO:
        GOTO    COLGADO

        END
