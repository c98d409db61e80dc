// Tree views. A node is known by its path, "\" between the levels.
#include "ui/qt/qt_control.h"
#include "ui/qt/qt_text.h"

#include <QTreeWidget>

#include <algorithm>

namespace brindle {

namespace {

constexpr std::uint32_t kStyleBorder = 0x00800000;
constexpr std::uint32_t kStyleHasButtons = 0x1;
constexpr std::uint32_t kStyleLinesAtRoot = 0x4;

class TreeControl : public QtControl {
public:
  TreeControl(const DialogItem& item, QTreeWidget* tree) : QtControl(item, tree), m_pTree(tree) {
    tree->setHeaderHidden(true);
    tree->setColumnCount(1);
    tree->setSelectionMode(QAbstractItemView::SingleSelection);
    tree->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tree->setRootIsDecorated(HasStyle(kStyleHasButtons | kStyleLinesAtRoot));
    tree->setTextElideMode(Qt::ElideNone);
    if (!HasStyle(kStyleBorder))
      tree->setFrameShape(QFrame::NoFrame);
    QObject::connect(tree, &QTreeWidget::itemSelectionChanged, tree, [this] {
      if (!m_pTree->selectedItems().isEmpty())
        Notify();
    });
  }

  void AddItem(const CString& path) override {
    const OwnChange change(*this);
    for (int end = path.Find(u'\\');; end = path.Find(u'\\', end + 1)) {
      AddLevel(end < 0 ? path : path.Left(end));
      if (end < 0)
        return;
    }
  }
  void ClearItems() override {
    const OwnChange change(*this);
    m_pTree->clear();
    m_nodes.clear();
  }
  [[nodiscard]] int GetItemCount() const override { return static_cast<int>(m_nodes.size()); }
  [[nodiscard]] CString GetItemText(int index) const override {
    return index >= 0 && index < GetItemCount() ? m_nodes[static_cast<std::size_t>(index)].path : CString();
  }
  [[nodiscard]] std::vector<int> GetSelection() const override {
    for (std::size_t i = 0; i < m_nodes.size(); ++i)
      if (m_nodes[i].item->isSelected())
        return {static_cast<int>(i)};
    return {};
  }
  void SetSelection(const std::vector<int>& indices) override {
    const OwnChange change(*this);
    const std::vector<int> valid = ValidIndices(indices);
    m_pTree->setCurrentItem(valid.empty() ? nullptr : m_nodes[static_cast<std::size_t>(valid.front())].item);
  }

private:
  struct Node {
    CString path;
    QTreeWidgetItem* item;
  };

  [[nodiscard]] QTreeWidgetItem* Find(const CString& path) const {
    const auto node = std::find_if(m_nodes.begin(), m_nodes.end(), [&](const Node& row) { return row.path == path; });
    return node == m_nodes.end() ? nullptr : node->item;
  }

  void AddLevel(const CString& path) {
    if (path.IsEmpty() || Find(path) != nullptr)
      return;
    const int separator = path.ReverseFind(u'\\');
    QTreeWidgetItem* const above = separator < 0 ? nullptr : Find(path.Left(separator));
    auto* const item = above != nullptr ? new QTreeWidgetItem(above) : new QTreeWidgetItem(m_pTree);
    item->setText(0, ToQt(path.Mid(separator + 1)));
    item->setData(0, Qt::UserRole, GetItemCount()); // the index that scripts know it by
    m_nodes.push_back({path, item});
  }

  QTreeWidget* m_pTree;
  std::vector<Node> m_nodes; // in the order of adding
};

} // namespace

std::unique_ptr<QtControl> MakeTree(const DialogItem& item, QWidget* parent) {
  return std::make_unique<TreeControl>(item, new QTreeWidget(parent));
}

} // namespace brindle
