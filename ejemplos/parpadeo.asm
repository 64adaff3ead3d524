; parpadeo.asm (16C54)
;
; Enciende y apaga PB0 sin fin, con una espera entre cambio y
; cambio. Es el programa por el que se empieza: un puerto de
; salida, una subrutina y dos bucles de DECFSZ, uno dentro del
; otro.
;
; Qué mirar: con la ejecución parada, pulsa POR, elige el 16C54
; y solo entonces carga este fichero, ensambla (--->) y pon un
; punto de parada en 005, donde se llama a la espera. Cada vez
; que pulses Ejecutar, PB0 habrá cambiado:
;
;     parada   PB0   Ciclos
;        1      1        8
;        2      0    7.718
;        3      1   15.428
;
; Entre dos cambios pasan 7710 ciclos: a 4000 KHz, 7,71
; milisegundos.

; Los registros no tienen nombre hasta que EQU se lo da.
PB      EQU     6
LED     EQU     1               ; el valor de PB0
DENTRO  EQU     8               ; contadores de la espera
FUERA   EQU     9

; Tras un reset se empieza en la última palabra.
        ORG     1FF
        GOTO    INICIO

        ORG     0
INICIO: MOVLW   0FE             ; un 0 es salida: solo PB0
        TRIS    PB              ; (0FE, que FE sería un nombre)
        CLRF    PB
BUCLE:  MOVLW   LED
        XORWF   PB              ; sin destino, va al registro
        CALL    ESPERA
        GOTO    BUCLE

; Diez vueltas de 256. Con llamada y vuelta son 7706 ciclos.
ESPERA: MOVLW   0A              ; en hexadecimal, 0A es diez
        MOVWF   FUERA
        CLRF    DENTRO          ; de 0 pasa a 255, 256 vueltas
GIRA:   DECFSZ  DENTRO
        GOTO    GIRA
        DECFSZ  FUERA
        GOTO    GIRA
        RETLW   0

        END

