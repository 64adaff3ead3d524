#!/usr/bin/python3
"""Reads the window as a screen reader reads it: by AT-SPI, from another process.

    /usr/bin/python3 tests/accessibility/screen_reader.py build/release/ui/qt/estructura

Opens the real program in an Xvfb and a D-Bus of its own, walks the whole accessible tree and checks that all the
controls are there with their name, description, role and state; that the lines of the lists tell their address; that
buttons and check boxes can be pressed; and that each press of the Tab key is announced. It waits for conditions, never
for a time, and leaves no process behind. Exits with 0, or with 1 and the list of what fails; with 77 if the system
lacks something.

What one screen reader says of it all is checked by orca_test.py.
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
    print("The package python3-gi is missing")
    sys.exit(77)

LIMIT_S = 3600  # of the whole
WAIT_S = 600  # of each condition: only for what never comes
# Of AT-SPI's constants.
STATES = {"active": 1, "checked": 4, "enabled": 8, "expandable": 9, "expanded": 10, "focusable": 11, "focused": 12,
          "sensitive": 24, "showing": 25, "visible": 30, "read-only": 43}
KEY_BY_SYMBOL = 3
TAB, DOWN, ENTER = 0xFF09, 0xFF54, 0xFF0D

# --- What there has to be ---

BUTTON, CHECK_BOX, RADIO_BUTTON, TEXT_BOX, LIST = "push button", "check box", "radio button", "text", "list"
LABEL, GROUP = "label", "panel"

# What cannot be used at the start, and what is not seen: the listing, and what only the 12C50x have.
DISABLED = {(BUTTON, "Entrar instrucción"), (BUTTON, "Entrar dato"), (BUTTON, "WDT"), (TEXT_BOX, "Dato")}
HIDDEN = {(TEXT_BOX, "Texto del listado"), (CHECK_BOX, "Ext., reloj externo"), (CHECK_BOX, "MCLR, pin de reset")}
CHECKED = {(RADIO_BUTTON, "Fuente"), (CHECK_BOX, "Programa Visible")}

INVENTORY = (
    [(GROUP, n) for n in ("Fuente y ficheros", "Edición del fuente", "Entrada de instrucciones", "PIC", "TMR0",
                          "Puertos", "Registros y entrada de datos")]
    + [(RADIO_BUTTON, n) for n in ("Fuente", "Listado")]
    + [(BUTTON, n) for n in ("Insertar 15 espacios", "Copiar", "Cortar", "Pegar", "Cargar ASM", "Salvar ASM",
                             "Borrar ASM", "Ensamblar", "Desensamblar", "Cargar HEX", "Salvar HEX", "Borrar HEX",
                             "HEX 16C84", "Entrar instrucción", "Borrar instrucción", "Break, punto de parada",
                             "Ejec. 1", "Ejecutar", "MCLR", "WDT", "POR", "T0CKI", "Entrar dato", "Fin")]
    + [(TEXT_BOX, n) for n in ("Código fuente", "Texto del listado", "Direc., dirección de programa", "Instrucción",
                               "Frecuencia en kHz", "F, frecuencia de T0CKI en Hz", "Dato")]
    + [(CHECK_BOX, n) for n in ("Ext., reloj externo", "MCLR, pin de reset", "WDT / 128, watchdog", "SLEEP",
                                "Programa Visible")]
    + [(CHECK_BOX, f"Puerto {p}, bit {b}") for p, bits in (("A", 4), ("B", 8), ("C", 8)) for b in range(bits)]
    + [("combo box", "PIC, dispositivo"), ("graphic", "Mapa de la memoria de programa")]
    + [(LIST, n) for n in ("Memoria de programa", "Nombres de los registros", "Registros", "Pila",
                           "Nombres de la memoria de datos", "Direcciones 00 a 0F", "Direcciones 10 a 1F",
                           "Memoria de datos 00 a 0F")]
    + [(LIST, f"Memoria de datos 10 a 1F, banco {b}") for b in range(4)]
    + [(LABEL, n) for n in ("CÓDIGO FUENTE", "MEMORIA DE PROGRAMA", "MEMORIA DE DATOS", "PILA", "REGISTROS", "TOS",
                            "Direc.", "Instrucción", "Código", "Frecuencia", "KHz", "Watchdog", "Ciclos", "F",
                            "Señal", "Divisor", "Dirección", "Dato", "Estructura 1.0 · Los autores de Estructura")]
    + [(LABEL, f"Bit {b}") for b in range(8)]
    + [(LABEL, f"Puerto {p}") for p in "ABC"]
    + [(LABEL, f"Banco {b}") for b in range(4)]
)

# The labels that show a value, with the one they show at the start.
VALUES = {
    "Código de la instrucción": "", "Watchdog, ciclos hasta que desborda": "", "Ciclos transcurridos": "0",
    "Señal del temporizador": "Ext. Des.", "Divisor del temporizador": "1", "Registro que se va a cambiar": "",
    "TRISA en binario": "----1111", "TRISB en binario": "11111111", "TRISC en binario": "11111111",
    "Leyenda de OPTION": "--CSA210", "OPTION en binario": "--111111", "Leyenda de STATUS": "210odZDC",
    "STATUS en binario": "00011000", "Puerto A en binario": "----0000", "Puerto B en binario": "00000000",
    "Puerto C en binario": "00000000", "Banco que señala FSR": "0", "Dirección que señala FSR": "00",
    "INDF, dato indirecto": "00", "Fichero HEX": "[sin nombre]", "Fichero ASM": "[sin nombre]",
}

LINES = {
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

failures = []


def check(what, found, expected):
    if found != expected:
        failures.append(f"{what}: is {found!r}, was to be {expected!r}")


def wait_for(what, condition):
    """The first value of the condition that counts as true; meanwhile the signals of D-Bus are served."""
    until = time.monotonic() + WAIT_S
    while not (value := condition()):
        if time.monotonic() > until:
            raise TimeoutError(f"in vain: {what}")
        if not GLib.MainContext.default().iteration(False):
            time.sleep(0.01)
    return value


# --- Processes ---

LIBC = ctypes.CDLL(None)
PR_SET_PDEATHSIG, PR_SET_CHILD_SUBREAPER = 1, 36


def die_with_the_parent():
    LIBC.prctl(PR_SET_PDEATHSIG, signal.SIGKILL, 0, 0, 0)


def start(command, environment, fd=None):
    return subprocess.Popen(command, env=environment, pass_fds=[] if fd is None else [fd],
                            preexec_fn=die_with_the_parent, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                            stderr=subprocess.DEVNULL)


def start_and_read(command, environment):
    """A server that tells where it is by the descriptor that it is given as {fd}."""
    read, write = os.pipe()
    process = start([part.format(fd=write) for part in command], environment, write)
    os.close(write)
    with os.fdopen(read) as output:
        said = output.readline().strip()
    if not said:
        raise RuntimeError(f"{command[0]} does not start")
    return process, said


def children():
    own_pid = str(os.getpid())
    for status in pathlib.Path("/proc").glob("[0-9]*/stat"):
        try:
            if status.read_text().rpartition(")")[2].split()[1] == own_pid:
                yield int(status.parent.name)
        except OSError:
            pass


def clean_up():
    """Ends the children, and the grandchildren as they are orphaned one by one, who become children."""
    while alive := list(children()):
        for pid in alive:
            os.kill(pid, signal.SIGKILL)
            os.waitpid(pid, 0)


# --- X ---

def give_the_keyboard(display, title):
    """Without a window manager nobody gives the keyboard to the window that opens: it would, at sight or at a click."""
    x11 = ctypes.CDLL("libX11.so.6")
    x11.XOpenDisplay.restype = ctypes.c_void_p
    x11.XDefaultRootWindow.restype = ctypes.c_ulong
    server = ctypes.c_void_p(x11.XOpenDisplay(display.encode()))
    parent, windows, count = ctypes.c_ulong(), ctypes.POINTER(ctypes.c_ulong)(), ctypes.c_uint()
    x11.XQueryTree(server, ctypes.c_ulong(x11.XDefaultRootWindow(server)), ctypes.byref(parent),
                   ctypes.byref(parent), ctypes.byref(windows), ctypes.byref(count))
    for window in windows[:count.value]:
        name = ctypes.c_char_p()
        if x11.XFetchName(server, ctypes.c_ulong(window), ctypes.byref(name)) and name.value == title.encode():
            x11.XSetInputFocus(server, ctypes.c_ulong(window), 1, ctypes.c_ulong(0))
    x11.XCloseDisplay(server)


# --- AT-SPI ---

class Node:
    """An accessible object of another process."""
    bus = None

    def __init__(self, service, path):
        self.service, self.path = service, path

    def __eq__(self, other):
        return isinstance(other, Node) and (self.service, self.path) == (other.service, other.path)

    def call(self, interface, method, arguments=None):
        reply = Node.bus.call_sync(self.service, self.path, interface, method, arguments, None,
                                   Gio.DBusCallFlags.NONE, WAIT_S * 1000, None)
        return reply.unpack() if reply.n_children() else None

    def accessible(self, method, arguments=None):
        return self.call("org.a11y.atspi.Accessible", method, arguments)[0]

    def property_of(self, name):
        return self.call("org.freedesktop.DBus.Properties", "Get",
                         GLib.Variant("(ss)", ("org.a11y.atspi.Accessible", name)))[0]

    @property
    def name(self):
        return self.property_of("Name")

    @property
    def description(self):
        return self.property_of("Description")

    @property
    def role(self):
        return self.accessible("GetRoleName")

    @property
    def states(self):
        low, high = self.accessible("GetState")
        return {name for name, bit in STATES.items() if (low | high << 32) >> bit & 1}

    @property
    def children(self):
        return [Node(*child) for child in self.accessible("GetChildren")]

    @property
    def text(self):
        """What is written in a box, or a label's value; None if that is the same as its name."""
        if "org.a11y.atspi.Text" not in self.accessible("GetInterfaces"):
            return None
        return self.call("org.a11y.atspi.Text", "GetText", GLib.Variant("(ii)", (0, -1)))[0]

    def set_text(self, text):
        self.call("org.a11y.atspi.EditableText", "SetTextContents", GLib.Variant("(s)", (text,)))

    def actions(self):
        return [action[0] for action in self.call("org.a11y.atspi.Action", "GetActions")[0]]

    def act(self, action):
        # Without waiting for a reply: an action may open a box, and not end before it is closed.
        Node.bus.call(self.service, self.path, "org.a11y.atspi.Action", "DoAction",
                      GLib.Variant("(i)", (self.actions().index(action),)), None, Gio.DBusCallFlags.NONE, -1, None,
                      None)

    def walk(self):
        """It and all that hangs from it, but for the lines of the lists."""
        role = self.role
        yield role, self
        if role != LIST:
            for child in self.children:
                yield from child.walk()


class Session:
    """A display, a bus and a program of its own."""

    def __init__(self, program, folder):
        environment = {"PATH": "/usr/bin:/bin", "HOME": folder, "XDG_RUNTIME_DIR": folder, "LANG": "C.UTF-8",
                       "QT_QPA_PLATFORM": "xcb", "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}
        # Without -noreset the server starts anew when its last client leaves, and does not let the next one in.
        # Without -r a key repeats if the machine is slow to let it go.
        _, display = start_and_read(["Xvfb", "-displayfd", "{fd}", "-screen", "0", "1500x900x24", "-nolisten", "tcp",
                                     "-noreset", "-r"], environment)
        environment["DISPLAY"] = ":" + display
        _, session = start_and_read(["dbus-daemon", "--session", "--nofork", f"--address=unix:path={folder}/session",
                                     "--print-address={fd}"], environment)
        environment["DBUS_SESSION_BUS_ADDRESS"] = session
        address = self.connect(session).call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None,
                                                  None, Gio.DBusCallFlags.NONE, WAIT_S * 1000, None).unpack()[0]
        Node.bus = self.connect(address)
        self.focused = collections.deque()
        Node.bus.signal_subscribe(None, "org.a11y.atspi.Event.Object", "StateChanged", None, None,
                                  Gio.DBusSignalFlags.NONE, self.state_changed)
        registry = Node("org.a11y.atspi.Registry", "/org/a11y/atspi/registry")
        registry.call("org.a11y.atspi.Registry", "RegisterEvent",
                      GLib.Variant("(sass)", ("object:state-changed:focused", [], "")))
        self.program = start([program], environment)
        root = Node("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root")
        self.application = wait_for(
            "the program in the registry", lambda: self.program.poll() is None and root.children)[0]
        self.window = wait_for("the window", lambda: self.application.children)[0]
        give_the_keyboard(environment["DISPLAY"], "Estructura")
        wait_for("the window with the keyboard", lambda: "active" in self.window.states)
        # At the start the background of the window has it.
        self.focus = wait_for("something with the focus", lambda: next(
            (node for _, node in self.window.walk() if "focused" in node.states), None))
        self.read_tree()

    @staticmethod
    def connect(address):
        flags = Gio.DBusConnectionFlags
        return Gio.DBusConnection.new_for_address_sync(
            address, flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None, None)

    def state_changed(self, _bus, service, path, _interface, _signal, data):
        what, on = data.unpack()[:2]
        if what == "focused" and on:
            self.focused.append(Node(service, path))

    def read_tree(self):
        self.nodes = collections.defaultdict(list)
        for role, node in self.window.walk():
            self.nodes[role, node.name].append(node)

    def find(self, role, name):
        return self.nodes[role, name][0]

    def press(self, symbol):
        Node("org.a11y.atspi.Registry", "/org/a11y/atspi/registry/deviceeventcontroller").call(
            "org.a11y.atspi.DeviceEventController", "GenerateKeyboardEvent",
            GLib.Variant("(isu)", (symbol, "", KEY_BY_SYMBOL)))

    def press_tab(self):
        """Presses the Tab key, and gives what is then announced and has the focus."""
        self.focused.clear()
        self.press(TAB)
        previous = self.focus
        # The event of a former press may come late, and behind that of a list comes that of its line.
        self.focus = wait_for("an event of the focus", lambda: next(
            (node for node in self.focused
             if node != previous and node.role != "list item" and "focused" in node.states), None))
        return self.focus


# --- The tests ---

def all_controls_are_there(session):
    for role, name in INVENTORY + [(LABEL, name) for name in VALUES]:
        found = session.nodes[role, name]
        what = f"{role} {name!r}"
        check(f"{what}, how many there are", len(found), 1)
        if len(found) != 1:
            continue
        node, states = found[0], found[0].states
        check(f"{what}, has a description", node.description not in ("", name), True)
        check(f"{what}, is seen", "showing" in states, (role, name) not in HIDDEN)
        if (role, name) not in HIDDEN:
            check(f"{what}, can be used", {"sensitive", "enabled"} <= states, (role, name) not in DISABLED)
        check(f"{what}, takes the focus", "focusable" in states, role not in (LABEL, GROUP, "graphic"))
        if role in (CHECK_BOX, RADIO_BUTTON):
            check(f"{what}, is checked", "checked" in states, (role, name) in CHECKED)
    known = set(INVENTORY) | {(LIST, "")}  # the combo box's entries
    for role, name in session.nodes:
        if role in (BUTTON, CHECK_BOX, RADIO_BUTTON, TEXT_BOX, LIST, "combo box"):
            check(f"{role} {name!r}, is in the inventory", (role, name) in known, True)


def values_and_lines_say_what_they_are(session):
    for name, value in VALUES.items():
        check(f"value of {name!r}", session.find(LABEL, name).text, value)
    check("value of the combo box", session.find("combo box", "PIC, dispositivo").text, "16C57")
    check("what is written in the frequency", session.find(TEXT_BOX, "Frecuencia en kHz").text, "4000")
    check("the listing, read-only", "read-only" in session.find(TEXT_BOX, "Texto del listado").states, True)
    for name, lines in LINES.items():
        lines_of_list = session.find(LIST, name).children
        for line, sentence in lines.items():
            check(f"line {line} of {name!r}", lines_of_list[line].name, sentence)
    check("lines of the program memory", len(session.find(LIST, "Memoria de programa").children), 2048)


def every_tab_stop_is_announced(session):
    """Goes the whole round: each press brings an event, and all of them together pass all that can be used."""
    stops = []
    while len(stops) < 200:
        focus = session.press_tab()
        if stops and focus == stops[0]:
            break
        stops.append(focus)
    names = [(focus.role, focus.name) for focus in stops]
    check("stops that come twice", [n for n, times in collections.Counter(names).items() if times > 1], [])
    # The arrow keys lead to the option that is not chosen, and to names and addresses nobody has to go.
    without_stop = {(RADIO_BUTTON, "Listado"), (LIST, "Nombres de los registros"),
                    (LIST, "Nombres de la memoria de datos"), (LIST, "Direcciones 00 a 0F"), (LIST, "Direcciones 10 a 1F")}
    usable = {one for one in INVENTORY if one[0] not in (LABEL, GROUP, "graphic")} - DISABLED - HIDDEN - without_stop
    check("stops that are missing", sorted(usable - set(names)), [])
    check("stops too many", sorted(set(names) - usable), [])


def buttons_and_check_boxes_can_be_pressed(session):
    session.find(TEXT_BOX, "Direc., dirección de programa").set_text("7FF")
    session.find(TEXT_BOX, "Instrucción").set_text("MOVLW 5A")
    code = session.find(LABEL, "Código de la instrucción")
    wait_for("the code of the instruction", lambda: code.text == "C5A")
    session.find(BUTTON, "Entrar instrucción").act("Press")
    last_line = session.find(LIST, "Memoria de programa").children[2047]
    wait_for("the instruction in the list", lambda: last_line.name ==
             "dirección 7FF, código C5A, MOVLW 5A, la siguiente que se ejecuta")

    session.find(BUTTON, "Ejec. 1").act("Press")
    registers = session.find(LIST, "Registros").children
    wait_for("the literal in W", lambda: registers[1].name == "W, valor 5A, ha cambiado")
    check("PC after the step", registers[0].name, "PC, valor 000, ha cambiado")
    memory_map = session.find("graphic", "Mapa de la memoria de programa")
    wait_for("the current address in the map", lambda: "Dirección actual 000;" in memory_map.description)
    check("the combo box can be used after a step",
          "sensitive" in session.find("combo box", "PIC, dispositivo").states, False)

    pin = session.find(CHECK_BOX, "Puerto B, bit 3")
    check("description of the pin", pin.description, "Pin de entrada. Marcada, está a 1.")
    pin.act("Toggle")
    wait_for("the pin checked", lambda: "checked" in pin.states)
    pin.act("Toggle")
    wait_for("the pin unchecked", lambda: "checked" not in pin.states)

    cycles = session.find(LABEL, "Ciclos transcurridos")
    check("there are cycles to clear", cycles.text != "0", True)
    cycles.act("Poner a cero")
    wait_for("the cycles at zero", lambda: cycles.text == "0")


def names_follow_the_device(session):
    session.focus = session.find(BUTTON, "POR")
    session.focus.act("Press")
    wait_for("the focus on the button pressed", lambda: "focused" in session.focus.states)
    combo = session.find("combo box", "PIC, dispositivo")
    wait_for("the combo box usable again", lambda: "sensitive" in combo.states)
    while session.press_tab() != combo:
        pass
    while combo.text != "12C508":
        previous = combo.text
        session.press(DOWN)
        wait_for("the list open", lambda: "expanded" in combo.states)
        session.press(DOWN)
        session.press(ENTER)
        wait_for(f"the one behind {previous}", lambda: combo.text != previous)
    pin = session.find(CHECK_BOX, "Puerto B, bit 3")
    wait_for("the name of the pin", lambda: pin.name == "GPIO, bit 3")
    wait_for("the name of TRIS", lambda: session.find(LABEL, "TRISB en binario").name == "TRIS en binario")
    memory = session.find(LIST, "Memoria de datos 00 a 0F").children
    check("line of OSCCAL", memory[5].name.startswith("OSCCAL, dirección 05, valor "), True)
    check("port A is hidden", "showing" in session.find(CHECK_BOX, "Puerto A, bit 0").states, False)
    check("pin MCLR is seen", "showing" in session.find(CHECK_BOX, "MCLR, pin de reset").states, True)
    check("lines of the program memory", len(session.find(LIST, "Memoria de programa").children), 512)


def questions_are_read_and_answered(session):
    session.find(BUTTON, "Borrar instrucción").act("Press")
    session.find(BUTTON, "Fin").act("Press")

    def question():
        return [child for child in session.application.children
                if child != session.window and "showing" in child.states]

    box = wait_for("the question", question)[0]
    parts = list(box.walk())
    texts = [node.name for role, node in parts if role == LABEL and node.name]
    check("text of the question", texts, [" (HEX)\nHa sido modificado.\n¿Desea salvarlo?"])
    buttons = {node.name: node for role, node in parts if role == BUTTON}
    check("answers", sorted(buttons), ["Cancelar", "No", "Sí"])
    buttons["No"].act("Press")
    wait_for("the end of the program", lambda: session.program.poll() is not None)
    check("result of the program", session.program.returncode, 0)


TESTS = [all_controls_are_there, values_and_lines_say_what_they_are, every_tab_stop_is_announced,
         buttons_and_check_boxes_can_be_pressed, names_follow_the_device,
         questions_are_read_and_answered]


def out_of_time(_signal, _frame):
    raise TimeoutError("the time of the test is over")


def main():
    for command in ("Xvfb", "dbus-daemon"):
        if shutil.which(command) is None:
            print(f"{command} is missing: see packages.txt")
            return 77
    if not pathlib.Path("/usr/share/dbus-1/services/org.a11y.Bus.service").exists():
        print("The package at-spi2-core is missing")
        return 77
    # Processes that ours leave as orphans come to this one, which ends them.
    LIBC.prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0)
    for signal_number in (signal.SIGALRM, signal.SIGTERM, signal.SIGINT):
        signal.signal(signal_number, out_of_time)
    signal.alarm(LIMIT_S)
    with tempfile.TemporaryDirectory(prefix="reader-") as folder:
        step = "start"
        try:
            session = Session(str(pathlib.Path(sys.argv[1]).resolve()), folder)
            for test in TESTS:
                step, before, began = test.__name__, len(failures), time.monotonic()
                test(session)
                print(f"{'wrong' if len(failures) > before else 'right'}: {step}, "
                      f"{time.monotonic() - began:.1f} s", flush=True)
        except Exception as error:
            failures.append(f"{step}: {error!r}")
        finally:
            signal.alarm(0)
            clean_up()
    for failure in failures:
        print("  " + failure)
    print(f"{len(failures)} wrong" if failures else "All is right.")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
