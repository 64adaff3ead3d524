// Names and descriptions: what a screen reader is told of each control on each device.
#include <map>

#include <QListView>
#include <QTimer>

#include "tests/accessibility/open_window.h"
#include "ui/qt/speech/accessible_events.h"

namespace estructura {
namespace {

TEST_F(accessible_window, every_control_has_a_name_and_a_description_on_every_device) {
  for (const catalogue_row& row : catalogue) {
    const std::string_view model = row.name;
    device(model);
    for (const control& one : record.look_all()) {
      EXPECT_NE(name(one.which(), one.index()), "") << model << " " << one.name();
      EXPECT_NE(description(one.which(), one.index()), "") << model << " " << one.name();
      // What was to be filled in has been.
      const std::string all = name(one.which(), one.index()) + description(one.which(), one.index());
      EXPECT_EQ(all.find('%'), std::string::npos) << all;
      EXPECT_EQ(all.find('&'), std::string::npos) << all;
    }
  }
}

TEST_F(accessible_window, no_two_controls_that_take_the_focus_share_a_name) {
  for (const catalogue_row& row : catalogue) {
    const std::string_view model = row.name;
    device(model);
    std::map<std::string, std::string> owner;
    for (const control& one : record.look_all()) {
      if (!takes_focus(one)) continue;
      const auto [other, is_new] = owner.try_emplace(name(one.which(), one.index()), one.name());
      EXPECT_TRUE(is_new) << model << ": " << one.name() << " and " << other->second << ", " << other->first;
    }
  }
}

TEST_F(accessible_window, a_button_is_named_by_its_caption_and_a_symbol_by_what_it_does) {
  EXPECT_EQ(name(id::cargarasm), "Cargar ASM");
  EXPECT_EQ(name(id::por), "POR");
  EXPECT_EQ(name(id::Ensamblar), "Ensamblar");
  EXPECT_EQ(name(id::desensamblar), "Desensamblar");
  EXPECT_EQ(name(id::tab), "Insertar 15 espacios");
}

TEST_F(accessible_window, a_name_follows_the_caption) {
  EXPECT_EQ(name(id::WATCHDOG), "WDT / 128, watchdog");
  record.poke().cpu.option = 0x37;  // the prescaler serves the timer
  record.refresh();
  window.refresh();
  EXPECT_EQ(name(id::WATCHDOG), "WDT / 1, watchdog");
}

TEST_F(accessible_window, the_run_button_says_that_it_stops_while_a_run_is_on) {
  EXPECT_EQ(name(id::ejecutar), "Ejecutar");
  record.poke().progmem[2047] = 0xBFF;  // GOTO 1FF, an unprogrammed word: nothing but NOPs
  QString running;
  QTimer::singleShot(0, &window, [&] {
    running = at(id::ejecutar).accessibleName();
    QTest::mouseClick(&at(id::ejecutar), Qt::LeftButton);
  });
  QTest::mouseClick(&at(id::ejecutar), Qt::LeftButton);
  EXPECT_EQ(running, "Parar");
  EXPECT_EQ(name(id::ejecutar), "Ejecutar");
}

TEST_F(accessible_window, a_pin_box_says_its_port_its_bit_and_its_direction) {
  EXPECT_EQ(name(id::PA, 3), "Puerto A, bit 3");
  EXPECT_EQ(name(id::PB, 7), "Puerto B, bit 7");
  EXPECT_EQ(name(id::PC, 0), "Puerto C, bit 0");
  EXPECT_EQ(description(id::PB, 7), "Pin de entrada. Marcada, está a 1.");
  record.poke().cpu.trisb = 0x7F;
  record.refresh();
  window.refresh();
  EXPECT_EQ(description(id::PB, 7), "Pin de salida, lo pone el programa.");
  EXPECT_EQ(description(id::PB, 6), "Pin de entrada. Marcada, está a 1.");
}

TEST_F(accessible_window, a_device_with_one_port_has_other_names) {
  EXPECT_EQ(name(id::TRISB), "TRISB en binario");
  EXPECT_EQ(row(id::RE, 0, 4), "TRISB, valor FF");
  device("12C508");
  EXPECT_EQ(name(id::PB, 3), "GPIO, bit 3");
  EXPECT_EQ(name(id::lp, 1), "GPIO");
  EXPECT_EQ(name(id::BPB), "GPIO en binario");
  EXPECT_EQ(name(id::TRISB), "TRIS en binario");
  EXPECT_EQ(row(id::RE, 0, 3), "TRIS, valor 3F");
  EXPECT_EQ(row(id::MDP, 0, 5).substr(0, 26), "OSCCAL, dirección 05, val");
  EXPECT_EQ(row(id::MDP, 0, 6).substr(0, 24), "GPIO, dirección 06, val");
  EXPECT_EQ(description(id::lstatus), "Nombres de los bits, del 7 al 0: GPWUF-*-PS0-/TO-/PD-Z-D-C.");
  device("16C54");
  EXPECT_EQ(name(id::PB, 3), "Puerto B, bit 3");
  EXPECT_EQ(row(id::MDP, 0, 5).substr(0, 22), "PA, dirección 05, val");
}

TEST_F(accessible_window, a_value_is_the_text_of_a_label_named_after_what_it_shows) {
  EXPECT_EQ(name(id::STATUS), "STATUS en binario");
  EXPECT_EQ(value(id::STATUS), "00011000");
  EXPECT_EQ(value(id::OPT), "--111111");
  EXPECT_EQ(value(id::ciclos), "0");
  EXPECT_EQ(value(id::FILHEX), "[sin nombre]");
  record.poke().cycles = 1234567;
  record.refresh();
  window.refresh();
  EXPECT_EQ(value(id::ciclos), "1.234.567");
  EXPECT_EQ(name(id::ciclos), "Ciclos transcurridos");
  // A title is its own name, and is not said twice.
  EXPECT_EQ(name(id::Label14), "Frecuencia");
  EXPECT_EQ(value(id::Label14), "(ninguno)");
}

TEST_F(accessible_window, the_combo_has_a_name_and_its_entry_for_a_value) {
  EXPECT_EQ(name(id::PIC), "PIC, dispositivo");
  EXPECT_EQ(value(id::PIC), "16C57");
  EXPECT_EQ(voice(id::PIC).role(), QAccessible::ComboBox);
  ASSERT_EQ(voice(id::PIC).childCount(), 1);
  EXPECT_EQ(voice(id::PIC).child(0)->childCount(), device_count);
  EXPECT_EQ(voice(id::PIC).child(0)->parent(), &voice(id::PIC));
}

TEST_F(accessible_window, a_line_of_memory_says_its_address_and_its_bank) {
  record.poke().bankregs[1 * 16 + 2] = 0x3F;
  record.poke().regs[8] = 0xA5;
  record.refresh();
  window.refresh();
  EXPECT_EQ(row(id::MD, 1, 2), "dirección 12, banco 1, valor 3F, ha cambiado");
  EXPECT_EQ(row(id::MDP, 0, 8), "dirección 08, valor A5, ha cambiado");
  EXPECT_EQ(row(id::MDP, 0, 3), "STATUS, dirección 03, valor 18");
  EXPECT_EQ(row(id::MDP, 0, 0), "INDF, dirección 00, sin valor propio");
  EXPECT_EQ(row(id::MDP, 0, 5), "PA, dirección 05, valor 0");
  EXPECT_EQ(row(id::nombres, 0, 2), "PCL, dirección 02");
  EXPECT_EQ(row(id::dirmd, 1, 15), "dirección 1F");
}

TEST_F(accessible_window, a_line_of_the_core_registers_and_of_the_stack_says_what_it_is) {
  EXPECT_EQ(row(id::RE, 0, 0), "PC, valor 7FF");
  EXPECT_EQ(row(id::RE, 0, 3), "TRISA, valor F");
  EXPECT_EQ(row(id::nomre, 0, 2), "OPTION");
  record.poke().stack[0] = 0x123;
  record.refresh();
  window.refresh();
  EXPECT_EQ(row(id::PIL, 0, 0), "cabeza de la pila, valor 123, ha cambiado");
  EXPECT_EQ(row(id::PIL, 0, 1), "segundo nivel, valor 000");
}

TEST_F(accessible_window, a_line_of_the_program_says_its_address_and_its_instruction) {
  EXPECT_EQ(row(id::MP, 0, 0x1FF), "dirección 1FF, sin programar");
  record.type(id::direc, "010");
  record.type(id::INS, "MOVLW 05");
  record.click(id::Entrarins);
  record.type(id::direc, "010");
  record.click(id::break_);
  window.refresh();
  EXPECT_EQ(row(id::MP, 0, 0x10), "dirección 010, código C05, MOVLW 05, punto de parada");
  // What is shown stays as it was.
  EXPECT_EQ(at<QListView>(id::MP).model()->index(0x10, 0).data().toString(), "*010\tC05\tMOVLW 05");
}

TEST_F(accessible_window, the_line_of_the_next_instruction_says_so) {
  EXPECT_EQ(row(id::MP, 0, 0x7FF), "dirección 7FF, sin programar, la siguiente que se ejecuta");
  record.poke().progmem[0x7FF] = 0xA12;  // GOTO 012
  record.click(id::eje1);
  window.refresh();
  EXPECT_EQ(row(id::MP, 0, 0x12), "dirección 012, sin programar, la siguiente que se ejecuta");
  EXPECT_EQ(row(id::MP, 0, 0x13), "dirección 013, sin programar");
}

TEST_F(accessible_window, a_line_that_the_last_step_changed_says_so) {
  record.poke().progmem[0x7FF] = 0xC5A;  // MOVLW 5A
  record.refresh();
  window.refresh();
  record.click(id::eje1);
  window.refresh();
  EXPECT_EQ(row(id::RE, 0, 1), "W, valor 5A, ha cambiado");
  EXPECT_EQ(row(id::RE, 0, 2), "OPTION, valor 3F");
}

TEST_F(accessible_window, a_line_chosen_by_a_screen_reader_is_a_line_clicked) {
  const auto toggle = [&](id list, int index, int place) {
    QAccessibleActionInterface* const line = voice(list, index).child(place)->actionInterface();
    ASSERT_NE(line, nullptr);
    line->doAction(QAccessibleActionInterface::toggleAction());
  };
  toggle(id::MD, 1, 3);
  EXPECT_EQ(record.look(id::dirdat).text(), "13.1 (33)");
  EXPECT_EQ(QApplication::focusWidget(), &at(id::dat));
  EXPECT_TRUE(at<QListView>(id::MD, 1).selectionModel()->selectedIndexes().isEmpty());
  record.type(id::direc, "100");
  window.refresh();
  toggle(id::MP, 0, 0x102);
  EXPECT_EQ(record.look(id::MP).selected(), std::vector<int>({0x100, 0x102}));
  EXPECT_EQ(record.look(id::direc).text(), "102");
  toggle(id::MP, 0, 0x100);
  EXPECT_EQ(record.look(id::MP).selected(), std::vector<int>({0x102}));
}

TEST_F(accessible_window, the_map_says_what_it_shows) {
  EXPECT_EQ(voice(id::mapa).role(), QAccessible::Graphic);
  EXPECT_EQ(description(id::mapa).find("Sin marca"), 0U);
  record.type(id::direc, "7FF");
  record.type(id::INS, "NOP");
  record.click(id::Entrarins);
  record.type(id::direc, "003");
  record.click(id::break_);
  record.click(id::eje1);
  window.refresh();
  EXPECT_EQ(description(id::mapa).find(
                "Dirección actual 000; puntos de parada: 1; otras direcciones programadas: 1."),
            0U)
      << description(id::mapa);
}

TEST_F(accessible_window, each_kind_of_control_has_its_role) {
  EXPECT_EQ(voice(id::eje1).role(), QAccessible::Button);
  EXPECT_EQ(voice(id::PB, 0).role(), QAccessible::CheckBox);
  EXPECT_EQ(voice(id::sl, 0).role(), QAccessible::RadioButton);
  EXPECT_EQ(voice(id::sl, 1).role(), QAccessible::RadioButton);
  EXPECT_EQ(voice(id::STATUS).role(), QAccessible::StaticText);
  EXPECT_EQ(voice(id::MP).role(), QAccessible::List);
  EXPECT_EQ(voice(id::dat).role(), QAccessible::EditableText);
  EXPECT_TRUE(voice(id::lst).state().readOnly);
}

TEST_F(accessible_window, a_title_belongs_to_what_it_stands_beside) {
  const auto labelled = [&](id title, id field) {
    for (const auto& [other, relation] : voice(field).relations(QAccessible::Label))
      if (other == &voice(title)) return true;
    return false;
  };
  EXPECT_TRUE(labelled(id::Label14, id::FREC));
  EXPECT_TRUE(labelled(id::Label8, id::ciclos));
  EXPECT_TRUE(labelled(id::Label5, id::source));
}

TEST_F(accessible_window, the_counter_of_cycles_offers_its_reset_as_an_action) {
  record.poke().cycles = 99;
  record.refresh();
  QAccessibleActionInterface* const actions = voice(id::ciclos).actionInterface();
  ASSERT_EQ(actions->actionNames(), QStringList({"Poner a cero"}));
  EXPECT_EQ(actions->keyBindingsForAction("Poner a cero"), QStringList({"Ctrl+0"}));
  actions->doAction("Poner a cero");
  EXPECT_EQ(record.chip().cycles, 0);
  EXPECT_EQ(value(id::ciclos), "0");
}

TEST_F(accessible_window, a_title_tells_what_it_belongs_to) {
  for (const auto& [title, field] : {std::pair{id::Label14, id::FREC}, std::pair{id::loption, id::OPT}}) {
    const auto found = voice(title).relations(QAccessible::Labelled);
    ASSERT_EQ(found.size(), 1);
    EXPECT_EQ(found.front().first, &voice(field));
  }
}

// A label that belongs to nothing is read whenever the focus enters its frame.
TEST_F(accessible_window, the_binary_views_of_the_registers_belong_to_their_list) {
  for (const id which : {id::TRISA, id::TRISB, id::TRISC}) {
    const auto found = voice(which).relations(QAccessible::AllRelations);
    ASSERT_EQ(found.size(), 1);
    EXPECT_EQ(found.front().first, &voice(id::RE));
    EXPECT_EQ(found.front().second, QAccessible::Controller);
  }
}

// --- texts, piece by piece ---

TEST_F(accessible_window, every_question_for_a_piece_of_a_text_is_answered) {
  record.type(id::source, "UNO DOS\r\nTRES. CUATRO");
  window.refresh();
  for (const id which : {id::FREC, id::direc, id::INS, id::source, id::STATUS, id::ciclos, id::PIC}) {
    QAccessibleTextInterface* const text = voice(which).textInterface();
    ASSERT_NE(text, nullptr) << name(which);
    const int count = text->characterCount();
    for (const auto boundary :
         {QAccessible::CharBoundary, QAccessible::WordBoundary, QAccessible::SentenceBoundary,
          QAccessible::ParagraphBoundary, QAccessible::LineBoundary, QAccessible::NoBoundary})
      for (int offset = 0; offset <= count; ++offset) {
        int start = 0;
        int end = 0;
        const QString piece = text->textAtOffset(offset, boundary, &start, &end);
        EXPECT_LE(end, count) << name(which) << " " << boundary << " " << offset;
        EXPECT_EQ(piece, start < 0 ? QString() : text->text(start, end)) << name(which) << " " << boundary;
      }
  }
}

TEST_F(accessible_window, a_box_of_one_line_is_read_whole_and_word_by_word) {
  record.type(id::INS, "MOVLW 05");
  window.refresh();
  QAccessibleTextInterface* const text = voice(id::INS).textInterface();
  ASSERT_NE(text, nullptr);
  int start = -1;
  int end = -1;
  EXPECT_EQ(text->attributes(3, &start, &end), QString());
  EXPECT_EQ(start, 0);
  EXPECT_EQ(end, 8);
  EXPECT_EQ(text->textAtOffset(1, QAccessible::WordBoundary, &start, &end), "MOVLW");
  EXPECT_EQ(text->textAtOffset(7, QAccessible::WordBoundary, &start, &end), "05");
  EXPECT_EQ(text->textAtOffset(8, QAccessible::WordBoundary, &start, &end), "");
  EXPECT_EQ(text->textAtOffset(8, QAccessible::LineBoundary, &start, &end), "MOVLW 05");
  // The end, and the caret.
  EXPECT_EQ(text->textAtOffset(-1, QAccessible::WordBoundary, &start, &end), "");
  text->setCursorPosition(2);
  EXPECT_EQ(text->textAtOffset(-2, QAccessible::WordBoundary, &start, &end), "MOVLW");
}

TEST_F(accessible_window, a_box_of_one_line_tells_its_caret_and_its_selection) {
  QAccessibleTextInterface* const text = voice(id::FREC).textInterface();
  ASSERT_NE(text, nullptr);
  at(id::FREC).setFocus();
  EXPECT_EQ(text->selectionCount(), 1);
  int start = -1;
  int end = -1;
  text->selection(0, &start, &end);
  EXPECT_EQ(start, 0);
  EXPECT_EQ(end, 4);
  text->setCursorPosition(2);
  EXPECT_EQ(text->cursorPosition(), 2);
  EXPECT_EQ(text->selectionCount(), 0);
  text->setSelection(0, 1, 3);
  EXPECT_EQ(record.look(id::FREC).sel_start(), 1);
  EXPECT_EQ(record.look(id::FREC).sel_length(), 2);
}

TEST_F(accessible_window, what_a_reader_writes_into_a_box_is_what_the_person_typed) {
  QAccessibleEditableTextInterface* const text = voice(id::direc).editableTextInterface();
  ASSERT_NE(text, nullptr);
  text->replaceText(0, 3, "1F0");
  EXPECT_EQ(record.look(id::direc).text(), "1F0");
  EXPECT_EQ(record.look(id::MP).row(), 0x1F0);
}

// --- what is said by itself ---

TEST_F(accessible_window, a_step_is_told_as_a_notification_of_the_status_bar) {
  QAccessibleInterface* const bar =
      QAccessible::queryAccessibleInterface(window.findChild<QWidget*>("novedades"));
  ASSERT_NE(bar, nullptr);
  EXPECT_EQ(bar->role(), QAccessible::StatusBar);
  ASSERT_EQ(bar->childCount(), 1);
  QAccessibleInterface& notice = *bar->child(0);
  EXPECT_EQ(notice.role(), QAccessible::Notification);
  EXPECT_FALSE(notice.state().invisible);
  EXPECT_EQ(notice.text(QAccessible::Name), "");
  record.poke().progmem[2047] = 0xC5A;  // MOVLW 5A
  window.refresh();
  QTest::keyClick(&window, Qt::Key_F7);
  EXPECT_EQ(notice.text(QAccessible::Name).toStdString(), "PC 000, W 5A, sigue sin programar.");
}

TEST_F(accessible_window, what_changed_behind_a_box_is_told_when_the_box_is_gone) {
  QAccessibleInterface& notice =
      *QAccessible::queryAccessibleInterface(window.findChild<QWidget*>("novedades"))->child(0);
  QWidget other;
  other.show();
  other.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
  record.poke().cpu.w = 0x77;
  record.refresh();
  window.refresh();
  EXPECT_EQ(notice.text(QAccessible::Name), "");
  window.activateWindow();
  EXPECT_TRUE(QTest::qWaitFor([&] { return notice.text(QAccessible::Name) == "W 77."; }));
}

TEST_F(accessible_window, nobody_is_told_of_lines_and_texts_that_the_program_chooses_elsewhere) {
  at(id::RE).setFocus();
  const auto told = [&](id which, QAccessible::Event type) {
    return is_told(QAccessibleEvent(&at(which), type));
  };
  EXPECT_TRUE(told(id::RE, QAccessible::Focus));
  EXPECT_TRUE(told(id::RE, QAccessible::SelectionWithin));
  EXPECT_FALSE(told(id::MP, QAccessible::Focus));
  EXPECT_FALSE(told(id::MP, QAccessible::SelectionWithin));
  EXPECT_FALSE(told(id::direc, QAccessible::TextUpdated));
  EXPECT_FALSE(told(id::direc, QAccessible::TextCaretMoved));
  at(id::direc).setFocus();
  EXPECT_TRUE(told(id::direc, QAccessible::TextCaretMoved));
  // States are remembered by readers: all of them are told.
  EXPECT_TRUE(told(id::PB, QAccessible::StateChanged));
  EXPECT_TRUE(told(id::ejecutar, QAccessible::NameChanged));
}

}  // namespace
}  // namespace estructura
