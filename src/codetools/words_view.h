// The command words view: a second editor in the code editor's place, kept in step both ways.
//
// The code editor stays the truth; the view's text is derived and lives only while shown.
#pragma once

#include <string_view>

namespace morva {

// Switches between the two editors; nothing when already so. Where there is no memory for the words
// the code stays, and the user is told.
void SetWordsView(bool on);
// The view anew from the code, and the code from the view; each keeps the caret's line. A view that
// cannot be made anew goes, and the user is told.
void SyncWordsFromCode();
void SyncCodeFromWords();

// The words of `code` over the view's selection as one undoable edit.
void WriteInWords(std::u16string_view code);

// While one of these stands, the view stands aside: what goes into the code does not pass through
// it and is not brought into it.
class WordsAside {
 public:
  WordsAside();
  ~WordsAside();
  WordsAside(const WordsAside&) = delete;
  WordsAside& operator=(const WordsAside&) = delete;

 private:
  bool before_;
};

void RegisterWordsView();

}  // namespace morva
