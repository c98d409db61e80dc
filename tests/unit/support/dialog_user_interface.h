// DialogUserInterface: a recording user interface with dialogs that a test plays.
// Room: tests. Used by: unit tests of dialogs and control access.
// May touch: memory only.
// Must not: notify the dialog's owner of what the owner changed itself.
// Invariant: each dialog plays the next of `plays`, and is cancelled when that did not end it.
#pragma once

#include "support/recording_user_interface.h"
#include "ui/dialog_template.h"

#include <algorithm>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

class DialogUserInterface;

class PlayedDialog final : public CDialogWindow {
public:
  PlayedDialog(DialogUserInterface& owner, const CDialogDescription& description, CDialogEvents& events);

  // What the user does.
  void Click(int id) { m_events.OnCommand(id, CDialogEvents::Clicked); }
  void Check(int id, bool checked) {
    m_controls[id].checked = checked;
    Click(id);
  }
  void Type(int id, const char16_t* text) {
    m_controls[id].text = CString(text);
    m_events.OnCommand(id, CDialogEvents::TextChanged);
  }
  void Select(int id, std::vector<int> selection) {
    m_controls[id].selection = std::move(selection);
    m_events.OnCommand(id, CDialogEvents::SelectionChanged);
  }
  void Notify(int id) { m_events.OnNotify(id); }
  void Command(int id, int code) { m_events.OnCommand(id, code); }
  void Menu(int id, int entry) { m_events.OnMenu(id, entry); }
  [[nodiscard]] bool IsEnded() const { return m_result.has_value(); }
  struct Control {
    CString text;
    CString date;
    std::vector<CString> items;
    std::vector<int> selection;
    int position = 0;
    bool checked = false;
  };
  [[nodiscard]] Control& At(int id) { return m_controls[id]; }

  [[nodiscard]] int Run() override;
  void End(int result) override;
  [[nodiscard]] bool HasControl(int id) const override { return m_controls.contains(id); }
  [[nodiscard]] long GetHandle(int id) const override;
  void SetFocus(int id) override { Log("focus " + std::to_string(id)); }
  [[nodiscard]] CString GetText(int id) const override { return Find(id).text; }
  void SetText(int id, const CString& text) override {
    m_controls[id].text = text;
    Log("text " + std::to_string(id) + " " + text.ToUtf8());
  }
  [[nodiscard]] bool IsChecked(int id) const override { return Find(id).checked; }
  void SetChecked(int id, bool checked) override { m_controls[id].checked = checked; }
  void AddItem(int id, const CString& text) override { m_controls[id].items.push_back(text); }
  void ClearItems(int id) override { m_controls[id].items.clear(); }
  [[nodiscard]] int GetItemCount(int id) const override { return static_cast<int>(Find(id).items.size()); }
  [[nodiscard]] CString GetItemText(int id, int index) const override {
    return Find(id).items.at(static_cast<std::size_t>(index));
  }
  [[nodiscard]] std::vector<int> GetSelection(int id) const override { return Find(id).selection; }
  void SetSelection(int id, const std::vector<int>& indices) override { m_controls[id].selection = indices; }
  [[nodiscard]] int GetPosition(int id) const override { return Find(id).position; }
  void SetPosition(int id, int position) override { m_controls[id].position = position; }
  [[nodiscard]] CString GetDate(int id) const override { return Find(id).date; }
  void SetDate(int id, const CString& date) override { m_controls[id].date = date; }
  void Move(int id, int x, int y, int width, int height) override {
    Log("move " + std::to_string(id) + " " + std::to_string(x) + " " + std::to_string(y) + " " + std::to_string(width) +
        " " + std::to_string(height));
  }
  void SetFont(int id, int pointSize, const CString& face) override {
    Log("font " + std::to_string(id) + " " + std::to_string(pointSize) + " " + face.ToUtf8());
  }
  void Show(int id, bool shown) override { Log((shown ? "show " : "hide ") + std::to_string(id)); }
  void Enable(int id, bool enabled) override { Log((enabled ? "enable " : "disable ") + std::to_string(id)); }
  void AddMenuEntry(int id, const CString& caption) override {
    Log("menu " + std::to_string(id) + " " + caption.ToUtf8());
  }

private:
  void Log(const std::string& call) const;
  [[nodiscard]] Control Find(int id) const {
    const auto found = m_controls.find(id);
    return found == m_controls.end() ? Control() : found->second;
  }

  DialogUserInterface& m_owner;
  CDialogEvents& m_events;
  std::map<int, Control> m_controls; // the dialog itself among them
  std::optional<int> m_result;
};

class DialogUserInterface : public RecordingUserInterface {
public:
  using Play = std::function<void(PlayedDialog&)>;

  std::deque<Play> plays;
  bool refusesDialogs = false;
  long handle = 77; // of the next dialog and its controls
  std::vector<CDialogDescription> descriptions;
  std::vector<std::string> calls; // what dialogs were asked to do, ended and opened ones among them

  [[nodiscard]] std::unique_ptr<CDialogWindow> CreateDialogWindow(const CDialogDescription& description,
                                                                  CDialogEvents& events) override {
    descriptions.push_back(description);
    if (refusesDialogs)
      return nullptr;
    return std::make_unique<PlayedDialog>(*this, description, events);
  }
};

inline PlayedDialog::PlayedDialog(DialogUserInterface& owner, const CDialogDescription& description,
                                  CDialogEvents& events)
    : m_owner(owner), m_events(events) {
  m_controls[kWindow].text = description.title;
  for (const std::vector<std::byte>& bytes : description.templates) {
    const auto page = brindle::ReadDialogTemplate(bytes);
    if (!description.sheet)
      m_controls[kWindow].text = page->header.title;
    for (const brindle::DialogItem& item : page->items)
      m_controls.try_emplace(item.id).first->second.text = item.caption;
  }
}

inline int PlayedDialog::Run() {
  const std::string title = m_controls[kWindow].text.ToUtf8();
  Log("opened " + title);
  m_events.OnOpened();
  if (!m_result && !m_owner.plays.empty()) {
    const DialogUserInterface::Play play = m_owner.plays.front();
    m_owner.plays.pop_front();
    play(*this);
  }
  if (!m_result)
    Click(kCancel);
  Log("closed " + title + " " + std::to_string(*m_result));
  return *m_result;
}

inline void PlayedDialog::End(int result) {
  if (!m_result)
    m_result = result;
}

inline long PlayedDialog::GetHandle(int id) const {
  return id == kWindow ? m_owner.handle : m_owner.handle + id;
}

inline void PlayedDialog::Log(const std::string& call) const {
  m_owner.calls.push_back(call);
}
