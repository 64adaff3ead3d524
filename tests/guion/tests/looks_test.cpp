// What scripts do and see: each row is a script and the lines it must show.
#include <gmock/gmock.h>

#include "script_runner.h"

namespace {

struct test_case {
  const char* script;
  const char* shown;
};

class looks : public EachMode {
 protected:
  void expect_shown(const test_case& c) {
    SCOPED_TRACE(c.script);
    const told said = runner.run_text(c.script);
    EXPECT_EQ(said.out, c.shown);
    EXPECT_EQ(said.err, "1 passed, 0 failed\n");
  }
};
IN_EACH_MODE(looks);

TEST_P(looks, values_are_printed_by_their_kind) {
  const test_case cases[] = {
      {"show eje1.caption eje1.tip eje1.enabled eje1.visible",
       "eje1.caption = \"Ejec. &1\"\neje1.tip = \"Ejecjutar una instrucción\"\neje1.enabled = true\n"
       "eje1.visible = true\n"},
      {"show Frame5.caption TRISA.caption WATCHDOG.caption sl(1).caption",
       "Frame5.caption = \"Puertos\"\nTRISA.caption = \"----1111\"\nWATCHDOG.caption = \"WDT / 128\"\n"
       "sl(1).caption = \"Listado\"\n"},
      {"show sl(0).value sl(1).value PB(3).value", "sl(0).value = 1\nsl(1).value = 0\nPB(3).value = 0\n"},
      {"show PIC.text FREC.text FREC.selstart",
       "PIC.text = \"16C57\"\nFREC.text = \"4000\"\nFREC.selstart = 0\n"},
      {"show PIL.rows PIL.count MP.count MP.index MP.selected",
       "PIL.rows = [\"000\", \"000\"]\nPIL.count = 2\nMP.count = 2048\nMP.index = 2047\nMP.selected = "
       "[2047]\n"},
      {"show MP.row(5) RE.index RE.selected",
       "MP.row(5) = \" 005\\t???\"\nRE.index = -1\nRE.selected = []\n"},
      {"show MD(0).background MD(1).background",
       "MD(0).background = \"window\"\nMD(1).background = \"face\"\n"},
      {"show mapa.scale mapa.row(0) mapa.marker",
       "mapa.scale = 2050\nmapa.row(0) = \"none\"\nmapa.marker = -1\n"},
      {"show chip.pc chip.sleeping chip.devmodel.progmask chip.devmodel.hasportc chip.progmem(0) "
       "chip.regs(0x3)",
       "chip.pc = 2047\nchip.sleeping = false\nchip.devmodel.progmask = 2047\nchip.devmodel.hasportc = true\n"
       "chip.progmem(0) = 65535\nchip.regs(0x3) = 24\n"},
      {"show hexname hexmod asmname asmmod focus clipboard ended",
       "hexname = \"\"\nhexmod = false\nasmname = \"\"\nasmmod = false\nfocus = \"\"\nclipboard = \"\"\n"
       "ended = false\n"},
      {"show boxes dialogs beeps dirdat.tag", "boxes = []\ndialogs = []\nbeeps = 0\ndirdat.tag = \"\"\n"},
  };
  for (const test_case& c : cases) expect_shown(c);
}

TEST_P(looks, texts_are_written_with_escapes) {
  expect_shown({R"(write "a b.txt" "x\"y\\z\r\n\tñ"
show file("a b.txt") exists("a b.txt") exists("c")
expect file("a b.txt") "x\"y\\z\r\n\tñ")",
                R"(file("a b.txt") = "x\"y\\z\r\n\tñ"
exists("a b.txt") = true
exists("c") = false
)"});
}

TEST_P(looks, lists_are_compared_as_printed) {
  expect_shown(
      {"expect PIL.rows [\"000\", \"000\"]\nexpect RE.selected []\nexpect MP.selected [0x7FF]\n"
       "expect chip.progmem(0) 0xFFFF\nexpect chip.pc 2047\nexpect boxes []",
       ""});
}

TEST_P(looks, folders_on_the_way_to_a_file_are_made) {
  expect_shown({"write \"one/two/three.txt\" \"\"\nshow exists(\"one/two/three.txt\") exists(\"one\")",
                "exists(\"one/two/three.txt\") = true\nexists(\"one\") = true\n"});
}

TEST_P(looks, the_machine_is_changed_without_a_refresh_until_one_is_asked_for) {
  expect_shown(
      {"program 2046 0xC05 0xA00\npoke chip.w 0x1F\npoke chip.bankregs(63) 7\n"
       "poke chip.devmodel.optmask 255\npoke chip.stack(0) -1\n"
       "show chip.progmem(2046) chip.progmem(2047) chip.bankregs(63) RE.row(1) chip.stack(0)\n"
       "refresh\nshow RE.row(1)",
       "chip.progmem(2046) = 3077\nchip.progmem(2047) = 2560\nchip.bankregs(63) = 7\n"
       "RE.row(1) = \" 00\"\nchip.stack(0) = -1\nRE.row(1) = \" 1F\"\n"});
}

TEST_P(looks, every_field_of_the_machine_can_be_poked_and_seen) {
  const char* const numbers[] = {"pc",
                                 "w",
                                 "option",
                                 "trisa",
                                 "trisb",
                                 "trisc",
                                 "pdlatch",
                                 "tolatch",
                                 "gpwuflatch",
                                 "pina",
                                 "pinb",
                                 "pinc",
                                 "cycles",
                                 "wdtcount",
                                 "wdtlimit",
                                 "prescount",
                                 "tockicount",
                                 "tockiperiod",
                                 "tockifreq",
                                 "regs(15)",
                                 "bankregs(0)",
                                 "stack(1)",
                                 "progmem(2047)",
                                 "breakpts(2047)",
                                 "devmodel.progmask",
                                 "devmodel.datamask",
                                 "devmodel.optmask",
                                 "devmodel.mask5",
                                 "devmodel.mask6"};
  const char* const booleans[] = {"sleeping", "firststep",         "running",
                                  "resumebp", "devmodel.hasportc", "devmodel.is16c5x"};
  std::string script;
  for (const char* const name : numbers)
    script += "poke chip." + std::string(name) + " 0x5A\nexpect chip." + name + " 90\n";
  for (const char* const name : booleans) {
    for (const char* const value : {"true", "false"})
      script += "poke chip." + std::string(name) + ' ' + value + "\nexpect chip." + name + ' ' + value + '\n';
  }
  expect_shown({script.c_str(), ""});
}

TEST_P(looks, clicks_reach_buttons_check_boxes_and_options) {
  expect_shown(
      {"click eje1\nshow chip.cycles focus\nclick PB(3)\nshow chip.pinb PB(3).value focus\n"
       "click PB(3)\nshow chip.pinb\nclick sl(1)\nshow sl(0).value sl(1).value source.visible lst.visible",
       "chip.cycles = 1\nfocus = \"eje1\"\nchip.pinb = 8\nPB(3).value = 1\nfocus = \"PB(3)\"\n"
       "chip.pinb = 0\nsl(0).value = 0\nsl(1).value = 1\nsource.visible = false\nlst.visible = true\n"});
}

TEST_P(looks, what_cannot_be_used_does_nothing) {
  // A disabled button, a hidden check box, a hidden list, a text box in a hidden frame's place; lines and
  // entries that are not there go unnoticed.
  expect_shown(
      {"click WDT\nclick fext\nclick entrardat\ntype dat \"12\"\nclick VISMP\nclick eje1\nrow MP 9999\n"
       "rows MP 1 9999\ndblclick MP 9999\npick PIC nothing\nclick sl(1)\nclick Copiar\ntype source \"x\"\n"
       "show chip.cycles fext.value dat.text MP.visible clip.visible Copiar.visible source.text focus",
       "chip.cycles = 1\nfext.value = 0\ndat.text = \"\"\nMP.visible = false\nclip.visible = false\n"
       "Copiar.visible = true\nsource.text = \"\"\nfocus = \"sl(1)\"\n"});
}

TEST_P(looks, lists_take_clicks_double_clicks_and_clicks_with_ctrl) {
  expect_shown(
      {"program 5 0xC05\nrow MP 5\nshow direc.text MP.selected focus\n"
       "rows MP 3 9 5\nshow MP.selected MP.index direc.text\n"
       "dblclick MP 5\nshow INS.text MP.selected",
       "direc.text = \"005\"\nMP.selected = [5]\nfocus = \"MP\"\nMP.selected = [3, 5, 9]\nMP.index = 5\n"
       "direc.text = \"005\"\nINS.text = \"MOVLW 05\"\nMP.selected = [5]\n"});
}

TEST_P(looks, a_second_line_added_to_the_selection_makes_break_beep) {
  expect_shown({"rows MP 3 9\nclick break\nshow beeps beeps", "beeps = 1\nbeeps = 0\n"});
}

TEST_P(looks, a_register_is_edited_by_hand) {
  expect_shown(
      {"row RE 1\nshow dirdat.caption dirdat.tag dat.text dat.selstart dat.sellength focus RE.selected\n"
       "type dat \"3C\"\nshow entrardat.enabled dat.selstart dat.sellength\nenter dat\n"
       "show chip.w RE.row(1) dat.text dat.enabled",
       "dirdat.caption = \"W\"\ndirdat.tag = \"129\"\ndat.text = \"00\"\ndat.selstart = 0\n"
       "dat.sellength = 2\nfocus = \"dat\"\nRE.selected = []\nentrardat.enabled = true\n"
       "dat.selstart = 2\ndat.sellength = 0\nchip.w = 60\nRE.row(1) = \" 3C\"\ndat.text = \"\"\n"
       "dat.enabled = false\n"});
}

TEST_P(looks, text_boxes_are_typed_into_and_selected_in_characters) {
  expect_shown(
      {"type source \"añ\\r\\nb\\nc\"\nshow source.text source.selstart asmmod focus\n"
       "select source 1 4\nshow source.selstart source.sellength\nselect source 4 99\n"
       "show source.selstart source.sellength\nselect source 2 0\nenter source\nshow source.text\n"
       "type source \"\"\nshow source.text",
       "source.text = \"añ\\r\\nb\\r\\nc\"\nsource.selstart = 8\nasmmod = true\nfocus = \"source\"\n"
       "source.selstart = 1\nsource.sellength = 4\nsource.selstart = 4\nsource.sellength = 4\n"
       "source.text = \"añ\\r\\n\\r\\nb\\r\\nc\"\nsource.text = \"\"\n"});
}

TEST_P(looks, the_focus_moves_only_to_what_takes_it) {
  expect_shown(
      {"focus FREC\nshow focus FREC.selstart FREC.sellength\nfocus ciclos\nfocus mapa\nfocus WDT\n"
       "show focus\ndblclick ciclos\npress mapa 3\nshow focus\nfocus PA(2)\nshow focus",
       "focus = \"FREC\"\nFREC.selstart = 0\nFREC.sellength = 4\nfocus = \"FREC\"\nfocus = \"FREC\"\n"
       "focus = \"PA(2)\"\n"});
}

TEST_P(looks, the_map_takes_heights_with_decimals) {
  expect_shown(
      {"press mapa 3.4\nshow MP.index\npress mapa 3.6\nshow MP.index\npress mapa 1234\nshow MP.index\n"
       "press mapa 2049.9\nshow MP.index\nprogram 7 1\npoke chip.breakpts(8) 1\nrow MP 9\nclick break\n"
       "show mapa.row(6) mapa.row(7) mapa.row(8) mapa.row(9)\nclick eje1\nshow mapa.marker",
       "MP.index = 3\nMP.index = 4\nMP.index = 1234\nMP.index = 2047\nmapa.row(6) = \"none\"\n"
       "mapa.row(7) = \"yellow\"\nmapa.row(8) = \"blue\"\nmapa.row(9) = \"blue\"\nmapa.marker = 0\n"});
}

TEST_P(looks, a_device_is_picked_from_the_list) {
  expect_shown(
      {"pick PIC \"12C508\"\nshow PIC.text chip.pc MP.count PA(0).visible fext.visible focus mapa.scale",
       "PIC.text = \"12C508\"\nchip.pc = 511\nMP.count = 512\nPA(0).visible = false\nfext.visible = true\n"
       "focus = \"PIC\"\nmapa.scale = 513\n"});
}

TEST_P(looks, answers_and_paths_are_taken_in_their_order_and_kept_to_be_seen) {
  expect_shown(
      {"program 0 0xA00\nchoose \"Uno.hex\"\nclick salvar\nshow hexname FILHEX.caption FILHEX.tip\n"
       "answer yes\nchoose \"\"\nclick cargar\nshow hexname boxes dialogs\nshow dialogs\n"
       "show file(\"uno.hex\")",
       "hexname = \"uno.hex\"\nFILHEX.caption = \"uno.hex\"\nFILHEX.tip = \"uno.hex\"\nhexname = \"\"\n"
       "boxes = [\"yesno ¿Desea borrar la memoria de programa?\"]\n"
       "dialogs = [\"save|Archivos hexadecimales (*.hex)|*.hex|Todos los archivos (*.*)|*.*|hex|\", "
       "\"open|Archivos hexadecimales (*.hex)|*.hex|Todos los archivos (*.*)|*.*|hex|\"]\n"
       "dialogs = []\nfile(\"uno.hex\") = \":02000000000AF4\\r\\n:00000001FF\\r\\n\"\n"});
}

TEST_P(looks, boxes_tell_their_kind) {
  expect_shown(
      {"choose \"none.hex\"\nclick cargar\nshow boxes\nwrite \"bad.hex\" \"x\\r\\n\"\nchoose \"bad.hex\"\n"
       "click cargar\nshow boxes\ntype direc \"003\"\nprogram 0 1\nclick borrarins\nanswer cancel\n"
       "click cargar\nshow boxes\npoke chip.prescount 32767\npoke chip.option 0xDF\n"
       "poke chip.cycles 2147483647\nclick eje1\nshow boxes",
       "boxes = [\"ok Error en lectura\"]\n"
       "boxes = [\"ok-right Error en fichero bad.hex.\\rFormato incorrecto.\"]\n"
       "boxes = [\"yesnocancel bad.hex (HEX)\\rHa sido modificado.\\r¿Desea salvarlo?\"]\n"
       "boxes = [\"fault\"]\n"});
}

TEST_P(looks, the_program_ends_and_can_still_be_looked_at) {
  expect_shown({"click eje1\nclick fin\nshow ended chip.cycles ciclos.caption eje1.caption",
                "ended = true\nchip.cycles = 1\nciclos.caption = \"1\"\neje1.caption = \"Ejec. &1\"\n"});
}

TEST_P(looks, closing_the_window_ends_a_run) {
  expect_shown(
      {"program 2047 0\nprogram 0 0 0\n@3 close\nclick ejecutar\nshow ended chip.running chip.cycles",
       "ended = true\nchip.running = false\nchip.cycles = 4\n"});
}

TEST_P(looks, the_clipboard_is_set_by_the_script) {
  expect_shown({"clipboard \"a\\r\\nñ\"\nshow clipboard", "clipboard = \"a\\r\\nñ\"\n"});
}

}  // namespace
