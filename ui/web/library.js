// The page's side of page_imports.h. What waits hands a promise to $waitFor; the rest is one call.
//
// Several actions may be waiting at a time: a run gives the thread back, the person presses a button, and that
// button asks a question. They end in the reverse order, as calls do, so each keeps its own unwound stack and
// goes on only when it is the last that waits (page/program.js sees to the order).
mergeInto(LibraryManager.library, {
  $waitFor__deps: ['$Asyncify'],
  $waitFor: function (kind, start) {
    return Asyncify.handleSleep(function (wake) {
      var stack;
      // By then the stack has been unwound and stored.
      Promise.resolve().then(function () { stack = Asyncify.currData; });
      Module.page.wait(kind, start, function (value) {
        Asyncify.currData = stack;
        wake(value);
      });
    });
  },
  $newText: function (text) {
    var size = lengthBytesUTF8(text) + 1;
    var place = _malloc(size);
    stringToUTF8(text, place, size);
    return place;
  },
  $newText__deps: ['malloc'],

  page_box__deps: ['$waitFor'],
  page_box: function (kind, text, size) {
    var shown = UTF8ToString(text, size);
    return waitFor('box', function () { return Module.page.box(kind, shown); });
  },
  page_choose_file__deps: ['$waitFor', '$newText'],
  page_choose_file: function (save, filter, filterSize, extension, extensionSize, proposed, proposedSize) {
    var what = {
      save: save !== 0,
      filter: UTF8ToString(filter, filterSize),
      extension: UTF8ToString(extension, extensionSize),
      proposed: UTF8ToString(proposed, proposedSize)
    };
    return waitFor('dialog', function () { return Module.page.chooseFile(what).then(newText); });
  },
  page_hand_over__deps: ['$waitFor'],
  page_hand_over: function (path, size, written, writtenSize) {
    var chosen = UTF8ToString(path, size);
    var place = UTF8ToString(written, writtenSize);
    return waitFor('hand-over', function () { return Module.page.handOver(chosen, place).then(Number); });
  },
  page_read_clipboard__deps: ['$waitFor', '$newText'],
  page_read_clipboard: function () {
    return waitFor('clipboard', function () { return Module.page.readClipboard().then(newText); });
  },
  page_write_clipboard__deps: ['$waitFor'],
  page_write_clipboard: function (text, size) {
    var copied = UTF8ToString(text, size);
    return waitFor('clipboard', function () { return Module.page.writeClipboard(copied); });
  },
  page_turn__deps: ['$waitFor'],
  page_turn: function (reason) {
    waitFor(reason === 2 ? 'paused' : 'turn', function () { return Module.page.turn(reason); });
  },

  page_beep: function () { Module.page.beep(); },
  page_end: function () { Module.page.end(); },
  page_action_done: function () { Module.page.actionDone(); },

  // The files are in memory, which has room or throws.
  fallocate: function () { return 0; }
});
