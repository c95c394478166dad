// A person at the real window: starts the workbench on the toolkit, clicks, types, answers
// boxes and waits for a state with a deadline. For widget tests and the tour.
#pragma once

#include <QString>
#include <QWidget>
#include <functional>

namespace desk {

// Starts the application with `home`/bin/MORVA-like settings in a fresh folder; once a process.
void Start(const QString& home);
// The settings file that the application reads.
QString SettingsFile();

QWidget* WidgetOf(int id);
// Waits until `state` holds; false after `milliseconds`.
bool Until(const std::function<bool()>& state, int milliseconds = 5000);
// Lets the application run for a while, for pictures and pauses between keys.
void Run(int milliseconds);

// Moves the pointer to a place of the widget and waits until the application was told: the
// display server answers when it likes.
void MovePointer(QWidget* widget, const QPoint& at);
void Click(int id);
void TypeInto(int id, const QString& text);
void Key(int id, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
// Into what has the keyboard. Behind a box nothing has it for a moment, which is waited for.
void TypeHere(const QString& text);
void KeyHere(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

// Armed before the modal thing opens: presses the button that bears `caption` (mnemonics
// aside) in the next message box, and keeps the box's words.
void AnswerBox(const QString& caption);
QString LastBoxText();
int BoxesSeen();
// Gives the next file dialog this path; empty cancels.
void AnswerFile(const QString& path);
// Chooses the item whose caption begins with this in the next popup; empty cancels.
void AnswerMenu(const QString& caption);

QString TextOf(int id);  // of an edit, label, log, button or editor
QStringList RowsOf(int id);
// A picture of the whole screen where there is one, else of the main window.
void Picture(const QString& file);

// Closes the main window as its close key does.
void CloseWindow();

}  // namespace desk
