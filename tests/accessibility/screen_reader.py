#!/usr/bin/python3
"""Lee la ventana como la lee un lector de pantalla: por AT-SPI, desde otro proceso.

    /usr/bin/python3 tests/accessibility/screen_reader.py build/release/ui/qt/estructura

Abre el programa de verdad en un Xvfb y un D-Bus propios, recorre el árbol accesible entero y comprueba que están todos
los controles con su nombre, su descripción, su clase y su estado; que las líneas de las listas dicen su dirección; que
los botones y las casillas se pulsan; y que cada pulsación del tabulador se anuncia. Espera condiciones, nunca un
tiempo; al acabar no deja ningún proceso. Sale con 0, o con 1 y la lista de lo que falla; con 77 si falta algo del
sistema.

Qué dice un lector concreto con todo ello lo comprueba orca_test.py.
"""
import collections
import ctypes
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile
import time

try:
    from gi.repository import Gio, GLib
except ImportError:
    print("Falta el paquete python3-gi")
    sys.exit(77)

LIMITE = 3600  # segundos, del total
ESPERA = 600  # segundos, de cada condición: solo para lo que no llega nunca
# De las constantes de AT-SPI.
ESTADOS = {"active": 1, "checked": 4, "enabled": 8, "expandable": 9, "expanded": 10, "focusable": 11, "focused": 12, "sensitive": 24, "showing": 25,
           "visible": 30, "read-only": 43}
TECLA_POR_SIMBOLO = 3
TABULADOR, ABAJO, ENTRAR = 0xFF09, 0xFF54, 0xFF0D

# --- lo que tiene que haber ---

BOTON, CASILLA, OPCION, TEXTO, LISTA = "push button", "check box", "radio button", "text", "list"
ROTULO, GRUPO = "label", "panel"

# Lo que al empezar no se puede usar, y lo que no se ve: el listado, y lo que solo tienen los 12C50x.
APAGADOS = {(BOTON, "Entrar instrucción"), (BOTON, "Entrar dato"), (BOTON, "WDT"), (TEXTO, "Dato")}
OCULTOS = {(TEXTO, "Texto del listado"), (CASILLA, "Ext., reloj externo"), (CASILLA, "MCLR, pin de reset")}
MARCADOS = {(OPCION, "Fuente"), (CASILLA, "Programa Visible")}

INVENTARIO = (
    [(GRUPO, n) for n in ("Fuente y ficheros", "Edición del fuente", "Entrada de instrucciones", "PIC", "TMR0",
                          "Puertos", "Registros y entrada de datos")]
    + [(OPCION, n) for n in ("Fuente", "Listado")]
    + [(BOTON, n) for n in ("Insertar 15 espacios", "Copiar", "Cortar", "Pegar", "Cargar ASM", "Salvar ASM",
                            "Borrar ASM", "Ensamblar", "Desensamblar", "Cargar HEX", "Salvar HEX", "Borrar HEX",
                            "HEX 16C84", "Entrar instrucción", "Borrar instrucción", "Break, punto de parada",
                            "Ejec. 1", "Ejecutar", "MCLR", "WDT", "POR", "T0CKI", "Entrar dato", "Fin")]
    + [(TEXTO, n) for n in ("Código fuente", "Texto del listado", "Direc., dirección de programa", "Instrucción",
                            "Frecuencia en kHz", "F, frecuencia de T0CKI en Hz", "Dato")]
    + [(CASILLA, n) for n in ("Ext., reloj externo", "MCLR, pin de reset", "WDT / 128, watchdog", "SLEEP",
                              "Programa Visible")]
    + [(CASILLA, f"Puerto {p}, bit {b}") for p, bits in (("A", 4), ("B", 8), ("C", 8)) for b in range(bits)]
    + [("combo box", "PIC, dispositivo"), ("graphic", "Mapa de la memoria de programa")]
    + [(LISTA, n) for n in ("Memoria de programa", "Nombres de los registros", "Registros", "Pila",
                            "Nombres de la memoria de datos", "Direcciones 00 a 0F", "Direcciones 10 a 1F",
                            "Memoria de datos 00 a 0F")]
    + [(LISTA, f"Memoria de datos 10 a 1F, banco {b}") for b in range(4)]
    + [(ROTULO, n) for n in ("CÓDIGO FUENTE", "MEMORIA DE PROGRAMA", "MEMORIA DE DATOS", "PILA", "REGISTROS", "TOS",
                             "Direc.", "Instrucción", "Código", "Frecuencia", "KHz", "Watchdog", "Ciclos", "F",
                             "Señal", "Divisor", "Dirección", "Dato", "Estructura 1.0 · Los autores de Estructura")]
    + [(ROTULO, f"Bit {b}") for b in range(8)]
    + [(ROTULO, f"Puerto {p}") for p in "ABC"]
    + [(ROTULO, f"Banco {b}") for b in range(4)]
)

# Los rótulos que muestran un valor, con el que muestran al empezar.
VALORES = {
    "Código de la instrucción": "", "Watchdog, ciclos hasta que desborda": "", "Ciclos transcurridos": "0",
    "Señal del temporizador": "Ext. Des.", "Divisor del temporizador": "1", "Registro que se va a cambiar": "",
    "TRISA en binario": "----1111", "TRISB en binario": "11111111", "TRISC en binario": "11111111",
    "Leyenda de OPTION": "--CSA210", "OPTION en binario": "--111111", "Leyenda de STATUS": "210odZDC",
    "STATUS en binario": "00011000", "Puerto A en binario": "----0000", "Puerto B en binario": "00000000",
    "Puerto C en binario": "00000000", "Banco que señala FSR": "0", "Dirección que señala FSR": "00",
    "INDF, dato indirecto": "00", "Fichero HEX": "[sin nombre]", "Fichero ASM": "[sin nombre]",
}

LINEAS = {
    "Memoria de programa": {0: "dirección 000, sin programar", 2047: "dirección 7FF, sin programar, la siguiente que se ejecuta"},
    "Registros": {0: "PC, valor 7FF", 1: "W, valor 00", 2: "OPTION, valor 3F", 3: "TRISA, valor F",
                  4: "TRISB, valor FF", 5: "TRISC, valor FF"},
    "Pila": {0: "cabeza de la pila, valor 000", 1: "segundo nivel, valor 000"},
    "Nombres de la memoria de datos": {1: "TMR0, dirección 01", 7: "PC, dirección 07"},
    "Direcciones 10 a 1F": {0: "dirección 10", 15: "dirección 1F"},
    "Memoria de datos 00 a 0F": {0: "INDF, dirección 00, sin valor propio", 3: "STATUS, dirección 03, valor 18",
                                 5: "PA, dirección 05, valor 0", 15: "dirección 0F, valor 00"},
    "Memoria de datos 10 a 1F, banco 1": {2: "dirección 12, banco 1, valor 00"},
    "Memoria de datos 10 a 1F, banco 3": {15: "dirección 1F, banco 3, valor 00"},
}

fallos = []


def comprueba(que, hay, esperado):
    if hay != esperado:
        fallos.append(f"{que}: hay {hay!r}, se esperaba {esperado!r}")


def espera(que, condicion):
    """El primer valor de la condición que vale; mientras tanto se atienden las señales de D-Bus."""
    hasta = time.monotonic() + ESPERA
    while not (valor := condicion()):
        if time.monotonic() > hasta:
            raise TimeoutError(f"se esperaba en vano: {que}")
        if not GLib.MainContext.default().iteration(False):
            time.sleep(0.01)
    return valor


# --- procesos ---

LIBC = ctypes.CDLL(None)
PR_SET_PDEATHSIG, PR_SET_CHILD_SUBREAPER = 1, 36


def muere_con_el_padre():
    LIBC.prctl(PR_SET_PDEATHSIG, signal.SIGKILL, 0, 0, 0)


def arranca(orden, entorno, fd=None):
    return subprocess.Popen(orden, env=entorno, pass_fds=[] if fd is None else [fd], preexec_fn=muere_con_el_padre,
                            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


def arranca_y_lee(orden, entorno):
    """Un servidor que dice dónde está por el descriptor que se le da con {fd}."""
    lee, escribe = os.pipe()
    proceso = arranca([parte.format(fd=escribe) for parte in orden], entorno, escribe)
    os.close(escribe)
    with os.fdopen(lee) as salida:
        dicho = salida.readline().strip()
    if not dicho:
        raise RuntimeError(f"{orden[0]} no arranca")
    return proceso, dicho


def hijos():
    yo = str(os.getpid())
    for estado in pathlib.Path("/proc").glob("[0-9]*/stat"):
        try:
            if estado.read_text().rpartition(")")[2].split()[1] == yo:
                yield int(estado.parent.name)
        except OSError:
            pass


def limpia():
    """Acaba con los hijos, y con los nietos según se van quedando huérfanos, que pasan a ser hijos."""
    while vivos := list(hijos()):
        for pid in vivos:
            os.kill(pid, signal.SIGKILL)
            os.waitpid(pid, 0)


# --- X ---

def da_el_teclado(pantalla, titulo):
    """Sin gestor de ventanas nadie da el teclado a la que se abre: lo haría él al verla o al pulsarla."""
    x11 = ctypes.CDLL("libX11.so.6")
    x11.XOpenDisplay.restype = ctypes.c_void_p
    x11.XDefaultRootWindow.restype = ctypes.c_ulong
    servidor = ctypes.c_void_p(x11.XOpenDisplay(pantalla.encode()))
    padre, ventanas, cuantas = ctypes.c_ulong(), ctypes.POINTER(ctypes.c_ulong)(), ctypes.c_uint()
    x11.XQueryTree(servidor, ctypes.c_ulong(x11.XDefaultRootWindow(servidor)), ctypes.byref(padre),
                   ctypes.byref(padre), ctypes.byref(ventanas), ctypes.byref(cuantas))
    for ventana in ventanas[:cuantas.value]:
        nombre = ctypes.c_char_p()
        if x11.XFetchName(servidor, ctypes.c_ulong(ventana), ctypes.byref(nombre)) and nombre.value == titulo.encode():
            x11.XSetInputFocus(servidor, ctypes.c_ulong(ventana), 1, ctypes.c_ulong(0))
    x11.XCloseDisplay(servidor)


# --- AT-SPI ---

class Nodo:
    """Un objeto accesible de otro proceso."""
    bus = None

    def __init__(self, servicio, ruta):
        self.servicio, self.ruta = servicio, ruta

    def __eq__(self, otro):
        return isinstance(otro, Nodo) and (self.servicio, self.ruta) == (otro.servicio, otro.ruta)

    def llama(self, interfaz, metodo, argumentos=None):
        respuesta = Nodo.bus.call_sync(self.servicio, self.ruta, interfaz, metodo, argumentos, None,
                                       Gio.DBusCallFlags.NONE, ESPERA * 1000, None)
        return respuesta.unpack() if respuesta.n_children() else None

    def accesible(self, metodo, argumentos=None):
        return self.llama("org.a11y.atspi.Accessible", metodo, argumentos)[0]

    def propiedad(self, nombre):
        return self.llama("org.freedesktop.DBus.Properties", "Get",
                          GLib.Variant("(ss)", ("org.a11y.atspi.Accessible", nombre)))[0]

    @property
    def nombre(self):
        return self.propiedad("Name")

    @property
    def descripcion(self):
        return self.propiedad("Description")

    @property
    def clase(self):
        return self.accesible("GetRoleName")

    @property
    def estados(self):
        bajo, alto = self.accesible("GetState")
        return {nombre for nombre, bit in ESTADOS.items() if (bajo | alto << 32) >> bit & 1}

    @property
    def hijos(self):
        return [Nodo(*hijo) for hijo in self.accesible("GetChildren")]

    @property
    def texto(self):
        """Lo escrito en un cuadro o el valor de un rótulo; nada si es lo mismo que el nombre."""
        if "org.a11y.atspi.Text" not in self.accesible("GetInterfaces"):
            return None
        return self.llama("org.a11y.atspi.Text", "GetText", GLib.Variant("(ii)", (0, -1)))[0]

    def escribe(self, texto):
        self.llama("org.a11y.atspi.EditableText", "SetTextContents", GLib.Variant("(s)", (texto,)))

    def acciones(self):
        return [accion[0] for accion in self.llama("org.a11y.atspi.Action", "GetActions")[0]]

    def actua(self, accion):
        # Sin esperar respuesta: una acción puede abrir un aviso y no acabar hasta que se cierre.
        Nodo.bus.call(self.servicio, self.ruta, "org.a11y.atspi.Action", "DoAction",
                      GLib.Variant("(i)", (self.acciones().index(accion),)), None, Gio.DBusCallFlags.NONE, -1, None,
                      None)

    def recorre(self):
        """Él y todo lo que cuelga de él, salvo las líneas de las listas."""
        clase = self.clase
        yield clase, self
        if clase != LISTA:
            for hijo in self.hijos:
                yield from hijo.recorre()


class Sesion:
    """Pantalla, bus y programa propios."""

    def __init__(self, programa, carpeta):
        entorno = {"PATH": "/usr/bin:/bin", "HOME": carpeta, "XDG_RUNTIME_DIR": carpeta, "LANG": "C.UTF-8",
                   "QT_QPA_PLATFORM": "xcb", "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}
        # Sin -noreset el servidor empieza de nuevo cuando se va el último cliente, y no deja entrar al siguiente. Sin
        # -r una tecla se repite si la máquina tarda en soltarla.
        _, pantalla = arranca_y_lee(["Xvfb", "-displayfd", "{fd}", "-screen", "0", "1500x900x24", "-nolisten", "tcp",
                                     "-noreset", "-r"], entorno)
        entorno["DISPLAY"] = ":" + pantalla
        _, sesion = arranca_y_lee(["dbus-daemon", "--session", "--nofork", f"--address=unix:path={carpeta}/sesion",
                                   "--print-address={fd}"], entorno)
        entorno["DBUS_SESSION_BUS_ADDRESS"] = sesion
        direccion = self.conecta(sesion).call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None,
                                                   None, Gio.DBusCallFlags.NONE, ESPERA * 1000, None).unpack()[0]
        Nodo.bus = self.conecta(direccion)
        self.con_foco = collections.deque()
        Nodo.bus.signal_subscribe(None, "org.a11y.atspi.Event.Object", "StateChanged", None, None,
                                  Gio.DBusSignalFlags.NONE, self.ha_cambiado)
        registro = Nodo("org.a11y.atspi.Registry", "/org/a11y/atspi/registry")
        registro.llama("org.a11y.atspi.Registry", "RegisterEvent",
                       GLib.Variant("(sass)", ("object:state-changed:focused", [], "")))
        self.programa = arranca([programa], entorno)
        raiz = Nodo("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root")
        self.aplicacion = espera("el programa en el registro", lambda: self.programa.poll() is None and raiz.hijos)[0]
        self.ventana = espera("la ventana", lambda: self.aplicacion.hijos)[0]
        da_el_teclado(entorno["DISPLAY"], "Estructura")
        espera("la ventana con el teclado", lambda: "active" in self.ventana.estados)
        # Al empezar lo tiene el fondo de la ventana.
        self.foco = espera("algo con el foco", lambda: next(
            (nodo for _, nodo in self.ventana.recorre() if "focused" in nodo.estados), None))
        self.lee()

    @staticmethod
    def conecta(direccion):
        opciones = Gio.DBusConnectionFlags
        return Gio.DBusConnection.new_for_address_sync(
            direccion, opciones.AUTHENTICATION_CLIENT | opciones.MESSAGE_BUS_CONNECTION, None, None)

    def ha_cambiado(self, _bus, servicio, ruta, _interfaz, _senal, datos):
        que, encendido = datos.unpack()[:2]
        if que == "focused" and encendido:
            self.con_foco.append(Nodo(servicio, ruta))

    def lee(self):
        self.nodos = collections.defaultdict(list)
        for clase, nodo in self.ventana.recorre():
            self.nodos[clase, nodo.nombre].append(nodo)

    def el(self, clase, nombre):
        return self.nodos[clase, nombre][0]

    def teclea(self, simbolo):
        Nodo("org.a11y.atspi.Registry", "/org/a11y/atspi/registry/deviceeventcontroller").llama(
            "org.a11y.atspi.DeviceEventController", "GenerateKeyboardEvent",
            GLib.Variant("(isu)", (simbolo, "", TECLA_POR_SIMBOLO)))

    def tabula(self):
        """Pulsa el tabulador, y da lo que entonces se anuncia y tiene el foco."""
        self.con_foco.clear()
        self.teclea(TABULADOR)
        anterior = self.foco
        # El aviso de una pulsación anterior puede llegar tarde, y después del de una lista el de su línea.
        self.foco = espera("un aviso de foco", lambda: next(
            (nodo for nodo in self.con_foco
             if nodo != anterior and nodo.clase != "list item" and "focused" in nodo.estados), None))
        return self.foco


# --- las pruebas ---

def estan_todos(sesion):
    for clase, nombre in INVENTARIO + [(ROTULO, nombre) for nombre in VALORES]:
        hay = sesion.nodos[clase, nombre]
        que = f"{clase} {nombre!r}"
        comprueba(f"{que}, cuántos hay", len(hay), 1)
        if len(hay) != 1:
            continue
        nodo, estados = hay[0], hay[0].estados
        comprueba(f"{que}, tiene descripción", nodo.descripcion not in ("", nombre), True)
        comprueba(f"{que}, se ve", "showing" in estados, (clase, nombre) not in OCULTOS)
        if (clase, nombre) not in OCULTOS:
            comprueba(f"{que}, se puede usar", {"sensitive", "enabled"} <= estados, (clase, nombre) not in APAGADOS)
        comprueba(f"{que}, toma el foco", "focusable" in estados, clase not in (ROTULO, GRUPO, "graphic"))
        if clase in (CASILLA, OPCION):
            comprueba(f"{que}, marcado", "checked" in estados, (clase, nombre) in MARCADOS)
    conocidos = set(INVENTARIO) | {(LISTA, "")}  # las entradas del combo
    for clase, nombre in sesion.nodos:
        if clase in (BOTON, CASILLA, OPCION, TEXTO, LISTA, "combo box"):
            comprueba(f"{clase} {nombre!r}, está en el inventario", (clase, nombre) in conocidos, True)


def los_valores_y_las_lineas_dicen_lo_que_son(sesion):
    for nombre, valor in VALORES.items():
        comprueba(f"valor de {nombre!r}", sesion.el(ROTULO, nombre).texto, valor)
    comprueba("valor del combo", sesion.el("combo box", "PIC, dispositivo").texto, "16C57")
    comprueba("lo escrito en la frecuencia", sesion.el(TEXTO, "Frecuencia en kHz").texto, "4000")
    comprueba("el listado, solo de lectura", "read-only" in sesion.el(TEXTO, "Texto del listado").estados, True)
    for nombre, lineas in LINEAS.items():
        hijos_de_la_lista = sesion.el(LISTA, nombre).hijos
        for linea, dice in lineas.items():
            comprueba(f"línea {linea} de {nombre!r}", hijos_de_la_lista[linea].nombre, dice)
    comprueba("líneas de la memoria de programa", len(sesion.el(LISTA, "Memoria de programa").hijos), 2048)


def el_tabulador_se_anuncia(sesion):
    """Da la vuelta entera: cada pulsación trae un aviso, y con todos se pasa por cuanto se puede usar."""
    paradas = []
    while len(paradas) < 200:
        foco = sesion.tabula()
        if paradas and foco == paradas[0]:
            break
        paradas.append(foco)
    nombres = [(foco.clase, foco.nombre) for foco in paradas]
    comprueba("paradas repetidas", [n for n, veces in collections.Counter(nombres).items() if veces > 1], [])
    # A la opción que no está elegida se va con las flechas, y a los nombres y direcciones no hace falta ir.
    sin_parada = {(OPCION, "Listado"), (LISTA, "Nombres de los registros"), (LISTA, "Nombres de la memoria de datos"),
                  (LISTA, "Direcciones 00 a 0F"), (LISTA, "Direcciones 10 a 1F")}
    se_usan = {uno for uno in INVENTARIO if uno[0] not in (ROTULO, GRUPO, "graphic")} - APAGADOS - OCULTOS - sin_parada
    comprueba("paradas que faltan", sorted(se_usan - set(nombres)), [])
    comprueba("paradas que sobran", sorted(set(nombres) - se_usan), [])


def los_botones_y_las_casillas_se_pulsan(sesion):
    sesion.el(TEXTO, "Direc., dirección de programa").escribe("7FF")
    sesion.el(TEXTO, "Instrucción").escribe("MOVLW 5A")
    codigo = sesion.el(ROTULO, "Código de la instrucción")
    espera("el código de la instrucción", lambda: codigo.texto == "C5A")
    sesion.el(BOTON, "Entrar instrucción").actua("Press")
    ultima = sesion.el(LISTA, "Memoria de programa").hijos[2047]
    espera("la instrucción en la lista", lambda: ultima.nombre ==
           "dirección 7FF, código C5A, MOVLW 5A, la siguiente que se ejecuta")

    sesion.el(BOTON, "Ejec. 1").actua("Press")
    registros = sesion.el(LISTA, "Registros").hijos
    espera("el literal en W", lambda: registros[1].nombre == "W, valor 5A, ha cambiado")
    comprueba("PC después del paso", registros[0].nombre, "PC, valor 000, ha cambiado")
    mapa = sesion.el("graphic", "Mapa de la memoria de programa")
    espera("la dirección actual en el mapa", lambda: "Dirección actual 000;" in mapa.descripcion)
    comprueba("el combo, después de un paso, se puede usar",
              "sensitive" in sesion.el("combo box", "PIC, dispositivo").estados, False)

    pin = sesion.el(CASILLA, "Puerto B, bit 3")
    comprueba("descripción del pin", pin.descripcion, "Pin de entrada. Marcada, está a 1.")
    pin.actua("Toggle")
    espera("el pin marcado", lambda: "checked" in pin.estados)
    pin.actua("Toggle")
    espera("el pin sin marcar", lambda: "checked" not in pin.estados)

    ciclos = sesion.el(ROTULO, "Ciclos transcurridos")
    comprueba("hay ciclos que borrar", ciclos.texto != "0", True)
    ciclos.actua("Poner a cero")
    espera("los ciclos a cero", lambda: ciclos.texto == "0")


def los_nombres_siguen_al_dispositivo(sesion):
    sesion.foco = sesion.el(BOTON, "POR")
    sesion.foco.actua("Press")
    espera("el foco en el botón pulsado", lambda: "focused" in sesion.foco.estados)
    combo = sesion.el("combo box", "PIC, dispositivo")
    espera("el combo otra vez usable", lambda: "sensitive" in combo.estados)
    while sesion.tabula() != combo:
        pass
    while combo.texto != "12C508":
        anterior = combo.texto
        sesion.teclea(ABAJO)
        espera("la lista abierta", lambda: "expanded" in combo.estados)
        sesion.teclea(ABAJO)
        sesion.teclea(ENTRAR)
        espera(f"el que sigue al {anterior}", lambda: combo.texto != anterior)
    pin = sesion.el(CASILLA, "Puerto B, bit 3")
    espera("el nombre del pin", lambda: pin.nombre == "GPIO, bit 3")
    espera("el nombre de TRIS", lambda: sesion.el(ROTULO, "TRISB en binario").nombre == "TRIS en binario")
    memoria = sesion.el(LISTA, "Memoria de datos 00 a 0F").hijos
    comprueba("línea de OSCCAL", memoria[5].nombre.startswith("OSCCAL, dirección 05, valor "), True)
    comprueba("puerto A oculto", "showing" in sesion.el(CASILLA, "Puerto A, bit 0").estados, False)
    comprueba("pin MCLR a la vista", "showing" in sesion.el(CASILLA, "MCLR, pin de reset").estados, True)
    comprueba("líneas de la memoria de programa", len(sesion.el(LISTA, "Memoria de programa").hijos), 512)


def las_preguntas_se_leen_y_se_contestan(sesion):
    sesion.el(BOTON, "Borrar instrucción").actua("Press")
    sesion.el(BOTON, "Fin").actua("Press")

    def pregunta():
        return [hijo for hijo in sesion.aplicacion.hijos if hijo != sesion.ventana and "showing" in hijo.estados]

    aviso = espera("la pregunta", pregunta)[0]
    partes = list(aviso.recorre())
    textos = [nodo.nombre for clase, nodo in partes if clase == ROTULO and nodo.nombre]
    comprueba("texto de la pregunta", textos, [" (HEX)\nHa sido modificado.\n¿Desea salvarlo?"])
    botones = {nodo.nombre: nodo for clase, nodo in partes if clase == BOTON}
    comprueba("respuestas", sorted(botones), ["Cancelar", "No", "Sí"])
    botones["No"].actua("Press")
    espera("el final del programa", lambda: sesion.programa.poll() is not None)
    comprueba("resultado del programa", sesion.programa.returncode, 0)


PRUEBAS = [estan_todos, los_valores_y_las_lineas_dicen_lo_que_son, el_tabulador_se_anuncia,
           los_botones_y_las_casillas_se_pulsan, los_nombres_siguen_al_dispositivo,
           las_preguntas_se_leen_y_se_contestan]


def fuera_de_tiempo(_senal, _marco):
    raise TimeoutError("se ha agotado el tiempo de la prueba")


def main():
    for orden in ("Xvfb", "dbus-daemon"):
        if shutil.which(orden) is None:
            print(f"Falta {orden}: véase packages.txt")
            return 77
    if not pathlib.Path("/usr/share/dbus-1/services/org.a11y.Bus.service").exists():
        print("Falta el paquete at-spi2-core")
        return 77
    # Los procesos que dejan huérfanos los nuestros vienen a este, que acaba con ellos.
    LIBC.prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0)
    for senal in (signal.SIGALRM, signal.SIGTERM, signal.SIGINT):
        signal.signal(senal, fuera_de_tiempo)
    signal.alarm(LIMITE)
    with tempfile.TemporaryDirectory(prefix="lector-") as carpeta:
        paso = "arranque"
        try:
            sesion = Sesion(str(pathlib.Path(sys.argv[1]).resolve()), carpeta)
            for prueba in PRUEBAS:
                paso, antes, comienzo = prueba.__name__, len(fallos), time.monotonic()
                prueba(sesion)
                print(f"{'falla' if len(fallos) > antes else 'bien'}: {paso}, "
                      f"{time.monotonic() - comienzo:.1f} s", flush=True)
        except Exception as error:
            fallos.append(f"{paso}: {error!r}")
        finally:
            signal.alarm(0)
            limpia()
    for fallo in fallos:
        print("  " + fallo)
    print(f"{len(fallos)} fallos" if fallos else "Todo bien.")
    return 1 if fallos else 0


if __name__ == "__main__":
    sys.exit(main())
