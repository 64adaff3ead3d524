#!/usr/bin/python3
"""What a person hears who works in the window with Orca: the real program, the real Orca, only the voice is
written down (orca_recorder.py).

    /usr/bin/python3 tests/accessibility/orca_test.py build/release/ui/qt/estructura [--print]

Everything is done with the keyboard, as that person does it: the Tab key through the whole window, a HEX file
loaded, steps, registers, pins, a breakpoint, a run, an assembly error, the box at the end. --print shows all
that was said. It has a display, a bus, a window manager and a home of its own, and waits for what is to be
heard, never for a time; the limits are there for a program that hangs. Exits with 0, with 1 and what was heard
instead, or with 77 where something is missing.
"""
import collections
import ctypes
import json
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time

sys.dont_write_bytecode = True
HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE))
import screen_reader  # noqa: E402
from screen_reader import BUTTON, CHECK_BOX, LIST, LABEL, TEXT_BOX, Gio, GLib, Node, wait_for  # noqa: E402

LIMIT_S = 600  # of the whole; with the machine to itself it takes less than one minute
WAIT_S = 90    # of each thing that is to be heard

TAB, ENTER, ESCAPE, SPACE, DOWN, UP = 0xFF09, 0xFF0D, 0xFF1B, 0x20, 0xFF54, 0xFF52
F5, F7, F8, F9 = 0xFFC2, 0xFFC4, 0xFFC5, 0xFFC6
ALT, CTRL, SHIFT = 0xFFE9, 0xFFE3, 0xFFE1

BUTTON_SAID, CHECK_OFF_SAID = "botón de pulsación", "casilla de verificación no marcada"

# The stops of the Tab key from the first control on, each with what is to be heard in this order.
STOPS = (
    [("Fuente", "botón de radio", "el código fuente o el listado")]
    + [(name, BUTTON_SAID) for name in ("Insertar 15 espacios", "Copiar", "Cortar", "Pegar")]
    + [("CÓDIGO FUENTE texto",)]
    + [(name, BUTTON_SAID) for name in ("Cargar ASM", "Salvar ASM", "Borrar ASM", "Desensamblar", "Ensamblar")]
    + [("Memoria de programa", "Lista con 2048 elementos"),
       ("Direc., dirección de programa texto", "7FF seleccionado"), ("Instrucción texto",)]
    + [(name, BUTTON_SAID) for name in ("Borrar instrucción", "Break, punto de parada", "Cargar HEX", "Salvar HEX",
                                        "Borrar HEX", "HEX 16C84")]
    + [("Registros", "Lista con 6 elementos"), ("Pila", "Lista con 2 elementos"),
       ("Memoria de datos 00 a 0F", "Lista con 16 elementos")]
    + [(f"Memoria de datos 10 a 1F, banco {bank}", "Lista con 16 elementos") for bank in range(4)]
    + [(f"Puerto {port}, bit {bit} {CHECK_OFF_SAID}", "Pin de entrada")
       for port, bits in (("A", 4), ("B", 8), ("C", 8)) for bit in reversed(range(bits))]
    + [("F, frecuencia de T0CKI en Hz texto", "0 seleccionado", "en hercios"), ("T0CKI", BUTTON_SAID),
       ("Ejec. 1", BUTTON_SAID, "F7 y F8"), ("Ejecutar", BUTTON_SAID), ("MCLR", BUTTON_SAID), ("POR", BUTTON_SAID),
       ("Programa Visible casilla de verificación marcada",), (f"WDT / 128, watchdog {CHECK_OFF_SAID}",),
       (f"SLEEP {CHECK_OFF_SAID}",), ("PIC, dispositivo caja combinada", "16C57"),
       ("Frecuencia texto", "4000 seleccionado", "en kilohercios"), ("Fin", BUTTON_SAID)])

# Address and word of the program, and what is heard when the instruction is executed.
PROGRAM = [
    (0x7FF, 0xA00, "PC 000, sigue MOVLW 05."),                                      # GOTO 000
    (0x000, 0xC05, "PC 001, W 05, sigue MOVWF 08."),                                # MOVLW 05
    (0x001, 0x028, "PC 002, dirección 08 valor 05, sigue ANDLW 00."),               # MOVWF 08
    (0x002, 0xE00, "PC 003, W 00, Z 1, sigue TRIS 6."),                             # ANDLW 00
    (0x003, 0x006, "PC 004, TRISB 00, sigue MOVLW 08."),                            # TRIS 6
    (0x004, 0xC08, "PC 005, W 08, sigue MOVWF 06."),                                # MOVLW 08
    (0x005, 0x026, "PC 006, Puerto B 08, Puerto B bit 3 a 1, sigue MOVLW 35."),     # MOVWF 06
    (0x006, 0xC35, "PC 007, W 35, sigue MOVWF 04."),                                # MOVLW 35
    (0x007, 0x024, "PC 008, FSR 35, sigue MOVWF 00."),                              # MOVWF 04
    (0x008, 0x020, "PC 009, dirección 15 banco 1 valor 35, sigue CALL 00C."),       # MOVWF 00
    (0x009, 0x90C, "PC 00C, cabeza de la pila 00A, sigue INCF 06."),                # CALL 00C
    (0x00C, 0x2A6, "PC 00D, Z 0, Puerto B 09, Puerto B bit 0 a 1, sigue GOTO 00C."),  # INCF 06,F
    (0x00D, 0xA0C, "PC 00C, sigue INCF 06."),                                       # GOTO 00C
]


def hex_file():
    """One record a word; then the end record."""
    lines = []
    for address, word, _ in PROGRAM:
        body = [2, address * 2 >> 8, address * 2 & 255, 0, word & 255, word >> 8]
        lines.append(":" + "".join(f"{byte:02X}" for byte in body + [-sum(body) & 255]))
    return "\r\n".join(lines + [":00000001FF", ""])


class Keyboard:
    """Keys as a real keyboard gives them to the display."""

    def __init__(self, display):
        self.x11, self.xtst = ctypes.CDLL("libX11.so.6"), ctypes.CDLL("libXtst.so.6")
        self.x11.XOpenDisplay.restype = ctypes.c_void_p
        self.x11.XKeysymToKeycode.argtypes = [ctypes.c_void_p, ctypes.c_ulong]
        self.x11.XKeysymToKeycode.restype = ctypes.c_ubyte
        self.server = ctypes.c_void_p(self.x11.XOpenDisplay(display.encode()))

    def press(self, symbol, *held):
        codes = [self.x11.XKeysymToKeycode(self.server, one) for one in (*held, symbol)]
        for code, down in [(code, 1) for code in codes] + [(code, 0) for code in reversed(codes)]:
            self.xtst.XTestFakeKeyEvent(self.server, code, down, 0)
        self.x11.XSync(self.server, 0)


class Ear:
    """What Orca said, in order."""

    def __init__(self, descriptor, aloud):
        self.heard = []
        self.news = threading.Condition()
        self.aloud = aloud
        threading.Thread(target=self.listen, args=[descriptor], daemon=True).start()

    def listen(self, descriptor):
        with os.fdopen(descriptor) as lines:
            for line in lines:
                one = json.loads(line)
                with self.news:
                    self.heard.append(one)
                    self.news.notify_all()
                if self.aloud and one[0] != "stop":
                    print(f"    {one[1]}" if one[0] == "say" else f"    ({one[1]})", flush=True)

    def since(self, mark):
        with self.news:
            return self.heard[mark:]

    def wait(self, condition, what):
        """The first value of the condition over all that was heard that counts as true."""
        until = time.monotonic() + WAIT_S
        with self.news:
            while not (value := condition(self.heard)):
                if not self.news.wait(until - time.monotonic()):
                    raise TimeoutError(f"in vain: {what}")
            return value


def in_order(heard, fragments):
    """Whether what was said holds the fragments, one after the other, and the last of them was not cut. What
    comes before it may be: Orca itself cuts the name of a window for what has the focus in it."""
    said, after_stop = "", 0
    for kind, text in heard:
        if kind == "stop":
            after_stop = len(said)
        elif kind != "key":
            said += text + "\n"
    at = 0
    for fragment in fragments[:-1]:
        at = said.find(fragment, at)
        if at < 0:
            return False
        at += len(fragment)
    return said.find(fragments[-1], max(at, after_stop)) >= 0


def has_focus(node):
    try:
        return node.role != "list item" and "focused" in node.states
    except GLib.Error:
        return False  # a line of a list that has been replaced since


class Session(screen_reader.Session):
    def __init__(self, program, folder, aloud):
        self.folder, self.aloud, self.mark, self.focus = folder, aloud, 0, None
        self.wrong = []
        self.environment = {
            "PATH": "/usr/bin:/bin", "HOME": folder, "XDG_RUNTIME_DIR": folder, "LANG": "C.UTF-8", "LANGUAGE": "es",
            "GSETTINGS_BACKEND": "memory", "QT_QPA_PLATFORM": "xcb", "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
            "PYTHONDONTWRITEBYTECODE": "1", "PYTHONPATH": str(HERE)}
        self.start_desktop()
        self.start_orca()
        self.start_program(program)

    def start_desktop(self):
        environment = self.environment
        _, display = screen_reader.start_and_read(
            ["Xvfb", "-displayfd", "{fd}", "-screen", "0", "1500x950x24", "-nolisten", "tcp", "-noreset", "-r"],
            environment)
        environment["DISPLAY"] = ":" + display
        _, bus = screen_reader.start_and_read(["dbus-daemon", "--session", "--nofork",
                                       f"--address=unix:path={self.folder}/bus", "--print-address={fd}"], environment)
        environment["DBUS_SESSION_BUS_ADDRESS"] = bus
        address = self.connect(bus).call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, None,
                                              Gio.DBusCallFlags.NONE, WAIT_S * 1000, None).unpack()[0]
        Node.bus = self.connect(address)
        self.focused = collections.deque()
        Node.bus.signal_subscribe(None, "org.a11y.atspi.Event.Object", "StateChanged", None, None,
                                  Gio.DBusSignalFlags.NONE, self.state_changed)
        Node("org.a11y.atspi.Registry", "/org/a11y/atspi/registry").call(
            "org.a11y.atspi.Registry", "RegisterEvent",
            GLib.Variant("(sass)", ("object:state-changed:focused", [], "")))
        screen_reader.start(["openbox"], environment)
        self.keyboard = Keyboard(environment["DISPLAY"])

    def start_orca(self):
        reads, writes = os.pipe()
        with open(f"{self.folder}/orca.log", "w") as log:
            subprocess.Popen(["/usr/bin/python3", str(HERE / "orca_recorder.py")], pass_fds=[writes],
                             env=dict(self.environment, ORCA_RECORDER_FD=str(writes)),
                             preexec_fn=screen_reader.die_with_the_parent, stdin=subprocess.DEVNULL, stdout=log,
                             stderr=log)
        os.close(writes)
        self.ear = Ear(reads, self.aloud)
        self.hears("Lector de pantalla activado")

    def start_program(self, program):
        self.program = screen_reader.start([program], self.environment)
        root = Node("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root")
        self.application = wait_for("the program in the registry", lambda: [
            one for one in root.children if one.name == "estructura"])[0]
        self.window = wait_for("its window", lambda: self.application.children)[0]
        self.hears("Estructura marco")
        self.read_tree()

    # --- Doing ---

    def press(self, symbol, *held):
        self.mark = len(self.ear.since(0))
        self.keyboard.press(symbol, *held)

    def type_into(self, box, text):
        """Until the box holds it."""
        for letter in text:
            held = [SHIFT] if letter == "_" else []
            self.keyboard.press({"\n": ENTER}.get(letter, ord(letter)), *held)
        wait_for(f"{text!r} typed", lambda: text in box.text)

    def press_tab(self):
        self.focused.clear()
        self.press(TAB)
        before = self.focus
        self.focus = wait_for("the focus elsewhere", lambda: next(
            (node for node in list(self.focused) if node != before and has_focus(node)), None))
        return self.focus

    def tab_to(self, role, name, *fragments):
        """As often as is needed, twice round at the most; then it must be heard."""
        wanted = self.find(role, name)
        # The event of the focus that is there already may still be on its way.
        self.focus = next((node for nodes in self.nodes.values() for node in nodes if has_focus(node)), None)
        for _ in range(2 * len(STOPS)):
            if self.press_tab() == wanted:
                return self.hears(*fragments)
        raise TimeoutError(f"Tab never comes to {name!r}")

    # --- Hearing ---

    def hears(self, *fragments):
        """Waits until what was said since the last key holds the fragments in this order, the last one whole."""
        try:
            self.ear.wait(lambda heard: in_order(heard[self.mark:], fragments), fragments)
        except TimeoutError:
            raise TimeoutError(f"was to be heard: {fragments}; was heard: {self.said()}") from None

    def said(self):
        """What was said since the last key, but for the echo of keys."""
        return [text for kind, text in self.ear.since(self.mark) if kind in ("say", "char")]

    def said_nothing_but(self, *sentences):
        if self.said() != list(sentences):
            self.wrong.append(f"was to be heard: {list(sentences)}; was heard: {self.said()}")


# --- What is done ---

def every_stop_of_the_tab_key_is_said(session):
    for stop in STOPS:
        session.press(TAB)
        session.hears(*stop)


def a_hex_file_is_loaded(session):
    path = pathlib.Path(session.folder) / "programa.hex"
    path.write_text(hex_file())
    session.tab_to(BUTTON, "Cargar HEX", "Cargar HEX", "Carga un fichero HEX")
    session.press(SPACE)
    session.hears("Abrir diálogo", "Nombre del fichero: texto")
    dialog = wait_for("the dialog", lambda: [one for one in session.application.children if one != session.window])[0]
    box = next(node for role, node in dialog.walk() if role == TEXT_BOX)
    session.type_into(box, str(path))
    session.press(ENTER)
    session.hears("Estructura marco", "Cargar HEX " + BUTTON_SAID, "Carga un fichero HEX",
                  f"Programa de {len(PROGRAM)} palabras, fichero HEX programa.hex.")


def a_line_of_a_list_says_its_value_as_it_is_now(session):
    session.tab_to(LIST, "Registros", "Registros", "Lista con 6 elementos", "Valores de los registros")
    session.press(DOWN)
    session.hears("PC, valor 7FF")
    session.press(DOWN)
    session.hears("W, valor 00")
    for _, _, sentence in PROGRAM[:2]:
        session.press(F7)
        session.hears(sentence)
    session.press(UP)
    session.hears("PC, valor 001, ha cambiado")
    session.press(DOWN)
    session.hears("W, valor 05, ha cambiado")


def a_step_says_what_it_changed(session):
    session.tab_to(BUTTON, "Ejec. 1", "Ejec. 1 " + BUTTON_SAID, "Teclas F7 y F8")
    keys = [(SPACE,), (F7,), (F8,), (ord("1"), ALT)]
    for i, (_, _, sentence) in enumerate(PROGRAM[2:]):
        session.press(*keys[i % len(keys)])
        session.hears(sentence)
        session.said_nothing_but(sentence)


def a_pin_says_its_port_its_bit_and_its_state(session):
    session.tab_to(CHECK_BOX, "Puerto A, bit 3", "Puerto A, bit 3 " + CHECK_OFF_SAID, "Pin de entrada")
    session.press(SPACE)
    session.hears("marcada")
    session.said_nothing_but("marcada")
    session.press(SPACE)
    session.hears("no marcada")


def a_breakpoint_says_where_it_is(session):
    session.press(F9)
    session.hears("Punto de parada en 00C.")
    session.tab_to(LIST, "Memoria de programa", "Memoria de programa", "2048 elementos", "Una línea por dirección")
    session.press(DOWN)
    session.hears("dirección 00D, código A0C, GOTO 00C")
    session.press(UP)
    session.hears("dirección 00C, código 2A6, INCF 06, punto de parada, la siguiente que se ejecuta")
    # A step has come there, so that the run ends before its first instruction; the next one goes round the loop.
    session.press(F5)
    session.hears("Parado en un punto de parada.")
    session.press(F5)
    session.hears("Parado en un punto de parada, Puerto B 0A, Puerto B bit 1 a 1, Puerto B bit 0 a 0.")
    session.press(F9)
    session.hears("Sin punto de parada en 00C.")


def a_run_says_only_that_it_starts_and_stops(session):
    """The program changes the pins all the time; nobody wants to hear that."""
    session.press(F5)
    session.hears("En marcha.")
    cycles, seen = session.find(LABEL, "Ciclos transcurridos"), set()
    wait_for("the run painted thirty times", lambda: seen.add(cycles.text) or len(seen) >= 30)
    session.said_nothing_but("En marcha.")
    session.press(F5)
    session.hears("Parado, ", "Puerto B ")
    # The reader is told of the pins afterwards.
    states = {bit: "checked" in session.find(CHECK_BOX, f"Puerto B, bit {bit}").states for bit in range(8)}
    if not any(states.values()):
        session.wrong.append("the run left every pin of port B at 0: it is to be made one that does not")


def an_assembly_error_is_read_with_its_line(session):
    source = session.find(TEXT_BOX, "Código fuente")
    session.tab_to(TEXT_BOX, "Código fuente", "CÓDIGO FUENTE texto", "Programa en ensamblador")
    session.type_into(source, "nop\nmovlx 5\n")
    session.tab_to(BUTTON, "Ensamblar", "Ensamblar " + BUTTON_SAID, "Ensambla el código fuente")
    session.press(SPACE)
    session.hears("alerta Estructura", "Instrucción incorrecta.", "Aceptar " + BUTTON_SAID)
    session.press(ENTER)
    session.hears("movlx 5", "seleccionado")


def an_assembly_says_how_long_the_program_is(session):
    source = session.find(TEXT_BOX, "Código fuente")
    wait_for("the source with the keys", lambda: "active" in session.window.states and "focused" in source.states)
    session.press(ord("a"), CTRL)
    session.type_into(source, "clrw\n")
    wait_for("the former source gone", lambda: "movlx" not in source.text)
    session.tab_to(BUTTON, "Ensamblar", "Ensamblar " + BUTTON_SAID, "Ensambla el código fuente")
    session.press(SPACE)
    session.hears("Programa de 1 palabra.")


def the_box_at_the_end_is_read(session):
    session.press(ord("f"), ALT)
    session.hears("alerta Estructura", "Ha sido modificado.\n¿Desea salvarlo?", "Sí " + BUTTON_SAID)
    session.press(ESCAPE)
    session.hears("Estructura marco", "Fin " + BUTTON_SAID)


SCENES = [every_stop_of_the_tab_key_is_said, a_hex_file_is_loaded, a_line_of_a_list_says_its_value_as_it_is_now,
          a_step_says_what_it_changed, a_pin_says_its_port_its_bit_and_its_state, a_breakpoint_says_where_it_is,
          a_run_says_only_that_it_starts_and_stops, an_assembly_error_is_read_with_its_line,
          an_assembly_says_how_long_the_program_is, the_box_at_the_end_is_read]


def missing():
    for command in ("Xvfb", "dbus-daemon", "openbox", "orca"):
        if shutil.which(command) is None:
            return command
    if not pathlib.Path("/usr/share/dbus-1/services/org.a11y.Bus.service").exists():
        return "at-spi2-core"
    return None


def main():
    if absent := missing():
        print(f"{absent} is missing: see packages.txt")
        return 77
    screen_reader.LIBC.prctl(screen_reader.PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0)
    screen_reader.WAIT_S = WAIT_S
    for one in (signal.SIGALRM, signal.SIGTERM, signal.SIGINT):
        signal.signal(one, screen_reader.out_of_time)
    signal.alarm(LIMIT_S)
    wrong, session, scene = [], None, "start"
    with tempfile.TemporaryDirectory(prefix="orca-") as folder:
        try:
            session = Session(str(pathlib.Path(sys.argv[1]).resolve()), folder, "--print" in sys.argv)
            for one in SCENES:
                scene, before, start = one.__name__, len(session.wrong), time.monotonic()
                one(session)
                print(f"{'wrong' if len(session.wrong) > before else 'right'}: {scene}, "
                      f"{time.monotonic() - start:.1f} s", flush=True)
        except Exception as error:  # whatever it was, the processes are ended and it is told
            wrong.append(f"{scene}: {error!r}")
        finally:
            signal.alarm(0)
            screen_reader.clean_up()
    wrong = (session.wrong if session else []) + wrong
    for one in wrong:
        print("  " + one)
    print(f"{len(wrong)} wrong" if wrong else "All is right.")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
