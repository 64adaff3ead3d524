; Cuenta en binario en el puerto B.
PB       EQU   6              ; los registros se bautizan con EQU
VUELTAS  EQU   8

         ORG   0
INICIO:  MOVLW 0
         TRIS  PB             ; PB entero de salida
         CLRF  PB
BUCLE:   INCF  PB             ; sin destino: el resultado queda en PB
         CALL  ESPERA
         GOTO  BUCLE

ESPERA:                       ; sola: nombra la línea siguiente
         MOVLW 3
         MOVWF VUELTAS
OTRA:    DECFSZ VUELTAS
         GOTO  OTRA
         RETLW 0

         ORG   7FF            ; vector de reset del 16C57
         GOTO  INICIO
         END

