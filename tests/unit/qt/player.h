// Player: a user who reads the commands of the console's dialogs and does them in windows.
// Room: tests. Used by: the table of dialog scripts, the examples in windows, the pictures of the documentation.
// May touch: the window that it is given, by events.
// Must not: know a script.
// Invariant: a line is taken only by a window that asks for something; messages are read and closed.
#pragma once

#include <QMessageBox>
#include <QString>
#include <QWidget>

#include <deque>
#include <optional>
#include <string>
#include <vector>

class QFileDialog;

class Player {
public:
  explicit Player(std::deque<QString> input) : m_input(std::move(input)) {}

  void Act(QWidget& window);
  [[nodiscard]] std::size_t LinesLeft() const { return m_input.size(); }
  // The commands that no control takes.
  [[nodiscard]] const std::vector<std::string>& Refused() const { return m_refused; }

private:
  std::optional<QString> Next();
  void Answer(QMessageBox& box);
  void ChooseFile(QFileDialog& dialog);
  void Command(QWidget& window);

  std::deque<QString> m_input;
  std::vector<std::string> m_refused;
};
