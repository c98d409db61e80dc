// RecordingUserInterface: keeps everything that scripts show, and answers from a script of its own.
// Room: tests. Used by: unit tests of every room.
// May touch: memory only.
// Must not: print or wait.
// Invariant: scripted answers are used first, in order; then the default answers.
#pragma once

#include "brindle/user_interface.h"
#include "values/messages.h"

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

class RecordingUserInterface : public CUserInterface {
public:
  std::vector<std::string> messages; // of "print"
  std::vector<std::string> notices;
  std::vector<std::string> errors; // whole boxes: message, line feed, line
  std::vector<std::string> questions;
  std::vector<FileRequest> fileRequests;
  std::vector<std::vector<std::string>> menus;
  std::vector<std::string> sounds;
  std::map<unsigned, std::function<void()>> timers; // running ones, by identifier
  std::map<unsigned, unsigned> timerPeriods;

  std::deque<ErrorAnswer> errorAnswers;
  std::deque<bool> yesNoAnswers;
  std::deque<std::optional<CString>> fileAnswers;
  std::deque<int> menuAnswers;
  ErrorAnswer defaultErrorAnswer = ErrorAnswer::Ok;
  // Called before an error box is answered.
  std::function<void()> onError;

  void CancelErrors() { defaultErrorAnswer = ErrorAnswer::Cancel; }

  // Everything printed, in one text.
  [[nodiscard]] std::string Output() const {
    std::string text;
    for (const std::string& message : messages)
      text += message;
    return text;
  }

  // The numbers of the errors shown, in order; 0 stands for a box without a message, -1 for an unknown one.
  [[nodiscard]] std::vector<int> ErrorNumbers() const {
    constexpr int kLargestNumber = 65;
    std::vector<int> numbers;
    for (const std::string& error : errors) {
      int found = error.starts_with("\n") ? 0 : -1;
      for (int number = 1; number <= kLargestNumber && found < 0; ++number)
        if (const auto message = brindle::LoadMessage(number))
          if (error.starts_with(message->ToUtf8() + "\n"))
            found = number;
      numbers.push_back(found);
    }
    return numbers;
  }

  void Forget() {
    messages.clear();
    notices.clear();
    errors.clear();
  }

  void ShowMessage(const CString& text) override { messages.push_back(text.ToUtf8()); }
  void ShowNotice(const CString& text) override { notices.push_back(text.ToUtf8()); }
  [[nodiscard]] ErrorAnswer ShowError(const CString& text) override {
    errors.push_back(text.ToUtf8());
    if (onError)
      onError();
    return Next(errorAnswers, defaultErrorAnswer);
  }
  [[nodiscard]] bool AskYesNo(const CString& question, const CString&) override {
    questions.push_back(question.ToUtf8());
    return Next(yesNoAnswers, false);
  }
  [[nodiscard]] std::optional<CString> ChooseFile(const FileRequest& request) override {
    fileRequests.push_back(request);
    return Next(fileAnswers, std::optional<CString>());
  }
  [[nodiscard]] int ShowPopupMenu(const CStringArray& entries) override {
    std::vector<std::string> shown;
    for (const CString& entry : entries)
      shown.push_back(entry.ToUtf8());
    menus.push_back(std::move(shown));
    return Next(menuAnswers, -1);
  }
  void PlaySoundFile(const CString& path) override { sounds.push_back(path.ToUtf8()); }
  [[nodiscard]] unsigned StartTimer(unsigned period, std::function<void()> tick) override {
    const unsigned identifier = ++m_nLastTimer;
    timers.emplace(identifier, std::move(tick));
    timerPeriods[identifier] = period;
    return identifier;
  }
  void StopTimer(unsigned identifier) override {
    timers.erase(identifier);
    timerPeriods.erase(identifier);
  }

private:
  template <class T> static T Next(std::deque<T>& answers, T otherwise) {
    if (answers.empty())
      return otherwise;
    T answer = std::move(answers.front());
    answers.pop_front();
    return answer;
  }

  unsigned m_nLastTimer = 0;
};
