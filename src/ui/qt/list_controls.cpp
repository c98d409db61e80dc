// List boxes, combo boxes and tab controls.
#include "ui/qt/qt_control.h"
#include "ui/qt/qt_text.h"

#include <QComboBox>
#include <QListWidget>
#include <QTabBar>
#include <QTabWidget>

#include <algorithm>

namespace brindle {

namespace {

constexpr std::uint32_t kStyleBorder = 0x00800000;
constexpr std::uint32_t kStyleVerticalScroll = 0x00200000;
constexpr std::uint32_t kStyleHorizontalScroll = 0x00100000;

class ListControl : public QtControl {
public:
  ListControl(const DialogItem& item, QListWidget* list) : QtControl(item, list), m_pList(list) {
    const bool multiple = Kind() == ControlKind::MultiListBox;
    list->setSelectionMode(multiple ? QAbstractItemView::MultiSelection : QAbstractItemView::SingleSelection);
    const auto policy = [this](std::uint32_t style) {
      return HasStyle(style) ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff;
    };
    list->setVerticalScrollBarPolicy(policy(kStyleVerticalScroll));
    list->setHorizontalScrollBarPolicy(policy(kStyleHorizontalScroll));
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list->setTabKeyNavigation(false);
    list->setTextElideMode(Qt::ElideNone);
    if (!HasStyle(kStyleBorder))
      list->setFrameShape(QFrame::NoFrame);
    QObject::connect(list, &QListWidget::itemSelectionChanged, list,
                     [this] { Command(CDialogEvents::SelectionChanged); });
  }

  void AddItem(const CString& text) override {
    const OwnChange change(*this);
    m_items.push_back(text);
    m_pList->addItem(ToQt(text));
  }
  void ClearItems() override {
    const OwnChange change(*this);
    m_pList->clear();
    m_items.clear();
  }
  [[nodiscard]] int GetItemCount() const override { return static_cast<int>(m_items.size()); }
  [[nodiscard]] CString GetItemText(int index) const override {
    return index >= 0 && index < GetItemCount() ? m_items[static_cast<std::size_t>(index)] : CString();
  }
  [[nodiscard]] std::vector<int> GetSelection() const override {
    std::vector<int> selection;
    for (int i = 0; i < m_pList->count(); ++i)
      if (m_pList->item(i)->isSelected())
        selection.push_back(i);
    return selection;
  }
  void SetSelection(const std::vector<int>& indices) override {
    const OwnChange change(*this);
    const std::vector<int> valid = ValidIndices(indices);
    m_pList->setCurrentRow(-1);
    m_pList->clearSelection();
    if (valid.empty())
      return;
    m_pList->setCurrentRow(valid.front()); // in view, and where the arrow keys go on
    for (const int index : valid)
      m_pList->item(index)->setSelected(true);
  }

private:
  QListWidget* m_pList;
  std::vector<CString> m_items;
};

class ComboControl : public QtControl {
public:
  ComboControl(const DialogItem& item, QComboBox* combo) : QtControl(item, combo), m_pCombo(combo) {
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon); // keeps its place, however long
    QObject::connect(combo, &QComboBox::currentIndexChanged, combo,
                     [this] { Command(CDialogEvents::SelectionChanged); });
  }

  [[nodiscard]] CString GetText() const override { return GetItemText(m_pCombo->currentIndex()); }
  void AddItem(const CString& text) override {
    const OwnChange change(*this);
    const int selected = m_pCombo->currentIndex();
    m_items.push_back(text);
    m_pCombo->addItem(ToQt(text));
    m_pCombo->setCurrentIndex(selected); // the widget would choose the first item by itself
  }
  void ClearItems() override {
    const OwnChange change(*this);
    m_pCombo->clear();
    m_items.clear();
  }
  [[nodiscard]] int GetItemCount() const override { return static_cast<int>(m_items.size()); }
  [[nodiscard]] CString GetItemText(int index) const override {
    return index >= 0 && index < GetItemCount() ? m_items[static_cast<std::size_t>(index)] : CString();
  }
  [[nodiscard]] std::vector<int> GetSelection() const override {
    return m_pCombo->currentIndex() < 0 ? std::vector<int>() : std::vector<int>{m_pCombo->currentIndex()};
  }
  void SetSelection(const std::vector<int>& indices) override {
    const OwnChange change(*this);
    const std::vector<int> valid = ValidIndices(indices);
    m_pCombo->setCurrentIndex(valid.empty() ? -1 : valid.front());
  }

protected:
  // A template gives the height with the list down; the box itself is one line high.
  void FitText() override {
    const int line = m_pCombo->sizeHint().height();
    const int below = m_pCombo->height() - line;
    if (below <= 0)
      return;
    m_pCombo->setMaxVisibleItems(std::max(1, below / std::max(1, m_pCombo->fontMetrics().height())));
    m_pCombo->resize(m_pCombo->width(), line);
  }

private:
  QComboBox* m_pCombo;
  std::vector<CString> m_items;
};

class TabControl : public QtControl {
public:
  TabControl(const DialogItem& item, QTabWidget* tabs) : QtControl(item, tabs), m_pTabs(tabs) {
    QObject::connect(tabs, &QTabWidget::currentChanged, tabs, [this] { OnChosen(); });
    // A script may have taken the choice away; the tab in front is then a choice as well.
    QObject::connect(tabs, &QTabWidget::tabBarClicked, tabs, [this](int index) {
      if (!m_bChosen && index == m_pTabs->currentIndex())
        OnChosen();
    });
  }

  void AddItem(const CString& text) override {
    const OwnChange change(*this);
    m_bChosen = m_bChosen || m_items.empty();
    m_items.push_back(text);
    m_pTabs->addTab(new QWidget, ToQt(text));
  }
  void ClearItems() override {
    const OwnChange change(*this);
    while (m_pTabs->count() > 0) {
      const std::unique_ptr<QWidget> page(m_pTabs->widget(0));
      m_pTabs->removeTab(0);
    }
    m_items.clear();
    m_bChosen = false;
  }
  [[nodiscard]] int GetItemCount() const override { return static_cast<int>(m_items.size()); }
  [[nodiscard]] CString GetItemText(int index) const override {
    return index >= 0 && index < GetItemCount() ? m_items[static_cast<std::size_t>(index)] : CString();
  }
  [[nodiscard]] std::vector<int> GetSelection() const override {
    return m_bChosen && m_pTabs->currentIndex() >= 0 ? std::vector<int>{m_pTabs->currentIndex()} : std::vector<int>();
  }
  void SetSelection(const std::vector<int>& indices) override {
    const OwnChange change(*this);
    const std::vector<int> valid = ValidIndices(indices);
    m_bChosen = !valid.empty();
    if (m_bChosen)
      m_pTabs->setCurrentIndex(valid.front());
  }

private:
  void OnChosen() {
    if (IsOwnChange())
      return;
    m_bChosen = true;
    Notify();
  }

  QTabWidget* m_pTabs;
  std::vector<CString> m_items;
  bool m_bChosen = false;
};

} // namespace

std::unique_ptr<QtControl> MakeListBox(const DialogItem& item, QWidget* parent) {
  return std::make_unique<ListControl>(item, new QListWidget(parent));
}

std::unique_ptr<QtControl> MakeComboBox(const DialogItem& item, QWidget* parent) {
  return std::make_unique<ComboControl>(item, new QComboBox(parent));
}

std::unique_ptr<QtControl> MakeTab(const DialogItem& item, QWidget* parent) {
  auto* const tabs = new QTabWidget(parent);
  tabs->lower(); // the controls that it shows stand on it
  return std::make_unique<TabControl>(item, tabs);
}

} // namespace brindle
