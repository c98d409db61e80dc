#include "ui/qt/form_window.h"

#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace brindle {

namespace {

// For the window's frame, a menu bar and the buttons of a sheet.
constexpr int kScreenMargin = 48;
constexpr int kTabMargin = 80;

} // namespace

FormWindow::FormWindow(QWidget* parent, Actions actions)
    : QDialog(parent), m_actions(std::move(actions)), m_pLayout(new QVBoxLayout(this)) {
  // Its end is no reason for the host's application to end.
  setAttribute(Qt::WA_QuitOnClose, false);
  setModal(true);
  setWindowFlag(Qt::WindowContextHelpButtonHint, false);
  m_pLayout->setContentsMargins(0, 0, 0, 0);
  m_pLayout->setSizeConstraint(QLayout::SetFixedSize);
}

QWidget* FormWindow::AddPage(const QString& title, bool asTab) {
  auto* const area = new QScrollArea;
  area->setFrameShape(QFrame::NoFrame);
  area->setFocusPolicy(Qt::NoFocus);
  auto* const page = new QWidget;
  area->setWidget(page);
  m_pages.push_back(area);
  if (!asTab) {
    m_pLayout->addWidget(area);
    return page;
  }
  if (m_pTabs == nullptr) {
    m_pTabs = new QTabWidget;
    const int margin = style()->pixelMetric(QStyle::PM_LayoutTopMargin, nullptr, this);
    m_pLayout->setContentsMargins(margin, margin, margin, margin);
    m_pLayout->addWidget(m_pTabs);
  }
  m_pTabs->addTab(area, title);
  return page;
}

void FormWindow::SetPageSize(std::size_t page, QSize size) {
  const QSize room =
      screen()->availableSize() - QSize(kScreenMargin, m_pTabs != nullptr ? kScreenMargin + kTabMargin : kScreenMargin);
  const int scrollBar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
  QSize shown = size;
  if (size.height() > room.height())
    shown.rwidth() += scrollBar;
  if (size.width() > room.width())
    shown.rheight() += scrollBar;
  QScrollArea* const area = m_pages[page];
  area->widget()->resize(size);
  area->setFixedSize(shown.boundedTo(room).expandedTo(QSize(1, 1)));
}

void FormWindow::ShowPage(std::size_t page) {
  if (m_pTabs != nullptr)
    m_pTabs->setCurrentIndex(static_cast<int>(page));
}

void FormWindow::AddButtons(const std::function<void()>& ok, const std::function<void()>& cancel) {
  auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  for (QAbstractButton* button : buttons->buttons())
    static_cast<QPushButton*>(button)->setAutoDefault(false);
  buttons->button(QDialogButtonBox::Ok)->setDefault(true);
  connect(buttons, &QDialogButtonBox::accepted, this, ok);
  connect(buttons, &QDialogButtonBox::rejected, this, cancel);
  m_pLayout->addWidget(buttons);
}

void FormWindow::AddMenuEntry(const QString& caption, const std::function<void()>& chosen) {
  if (m_pMenuBar == nullptr) {
    m_pMenuBar = new QMenuBar;
    m_pMenuBar->setNativeMenuBar(false);
    m_pLayout->setMenuBar(m_pMenuBar);
    // A menu bar goes in front of everything, so that it cannot be scrolled away.
    m_pMenuBar->show();
  }
  connect(m_pMenuBar->addAction(caption), &QAction::triggered, this, chosen);
}

void FormWindow::keyPressEvent(QKeyEvent* event) {
  const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
  if (plain && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter))
    m_actions.enter();
  else
    QDialog::keyPressEvent(event);
}

} // namespace brindle
