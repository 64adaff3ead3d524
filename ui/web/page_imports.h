// What the program asks of the page: JavaScript, in library.js. Texts go as UTF-8 with their size; texts that
// come back are allocated there with malloc and freed here.
#pragma once

#include <cstddef>

extern "C" {

// These wait for the person, or for the browser to have had its turn.
int page_box(int kind, const char* text, std::size_t size);
char* page_choose_file(int save, const char* filter, std::size_t filter_size, const char* extension,
                       std::size_t extension_size, const char* proposed, std::size_t proposed_size);
int page_hand_over(const char* path, std::size_t path_size, const char* written, std::size_t written_size);
char* page_read_clipboard();
void page_write_clipboard(const char* text, std::size_t size);
void page_turn(int reason);

// These do not.
void page_beep();
void page_end();
void page_action_done();

}  // extern "C"
