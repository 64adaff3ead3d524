; bancos.asm (16C57)
;
; Llena los 64 registros con banco a través de FSR e INDF: cada
; uno recibe su propia dirección. Una instrucción solo lleva 5
; bits de dirección, así que las direcciones 10 a 1F de los
; bancos 1, 2 y 3 se alcanzan con el banco en los bits 5 y 6 de
; FSR:
;
;     banco   FSR
;       0     10 a 1F
;       1     30 a 3F
;       2     50 a 5F
;       3     70 a 7F
;
; Qué mirar: con la ejecución parada, pulsa POR, elige el 16C57
; y solo entonces carga este fichero, ensambla (--->), pon un
; punto de parada en 00B y pulsa Ejecutar. A los 642 ciclos se
; para con las cuatro columnas de la memoria de datos llenas: 10
; a 1F, 30 a 3F, 50 a 5F y 70 a 7F, y FSR otra vez a 0.

INDF    EQU     0
STATUS  EQU     3
Z       EQU     2
FSR     EQU     4
BANCO   EQU     4               ; bit de FSR, 1 si hay banco

        ORG     7FF
        GOTO    INICIO

        ORG     0
INICIO: MOVLW   10
        MOVWF   FSR
BUCLE:  MOVF    FSR,W
        ANDLW   7F              ; FSR no tiene bit 7, se lee a 1
        MOVWF   INDF            ; al registro que dice FSR
        INCF    FSR
        BTFSC   STATUS,Z        ; tras 7F, que se lee FF, da 0
        GOTO    FIN
        BTFSS   FSR,BANCO
        BSF     FSR,BANCO       ; de 20 a 30 (20 a 2F, comunes)
        GOTO    BUCLE
FIN:    GOTO    FIN

        END

