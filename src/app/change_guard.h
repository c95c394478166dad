// Tells what the program itself does to an editor's text apart from what the user does.
#pragma once

namespace morva {

// While one of these stands, the code editor's changes are no changes of the program.
class SuppressChanges {
 public:
  SuppressChanges();
  ~SuppressChanges();
  SuppressChanges(const SuppressChanges&) = delete;
  SuppressChanges& operator=(const SuppressChanges&) = delete;

 private:
  bool before_;
};

// While one of these stands, the changes of both editors are the program's own: it inserts, or
// brings one editor up to the other.
class InsertingText {
 public:
  InsertingText();
  ~InsertingText();
  InsertingText(const InsertingText&) = delete;
  InsertingText& operator=(const InsertingText&) = delete;

 private:
  bool before_;
};

}  // namespace morva
