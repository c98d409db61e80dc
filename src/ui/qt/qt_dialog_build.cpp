// A template becomes a window: its controls, their places, and the ways of the keyboard through them.
#include "ui/qt/qt_dialog.h"
#include "ui/qt/qt_text.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPushButton>

#include <algorithm>

namespace brindle {

namespace {

// Arrow keys lead from one radio button of a group to the next.
class ArrowKeys : public QObject {
public:
  using Move = std::function<bool(int step)>;
  ArrowKeys(QObject* button, Move move) : QObject(button), m_move(std::move(move)) { button->installEventFilter(this); }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::KeyPress)
      return QObject::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Down || key == Qt::Key_Right)
      return m_move(1);
    if (key == Qt::Key_Up || key == Qt::Key_Left)
      return m_move(-1);
    return QObject::eventFilter(watched, event);
  }

private:
  Move m_move;
};

QFont FontOf(const DialogHeader& header) {
  return header.hasFont ? FontWith(QApplication::font(), header.pointSize, header.face) : QApplication::font();
}

} // namespace

QtDialog::QtDialog(const CDialogDescription& description, const std::vector<DialogTemplate>& templates,
                   CDialogEvents& events, QWidget* parent)
    : m_events(events), m_strTitle(description.title) {
  static long made = 0;
  m_nNumber = ++made;
  m_controlEvents = {.command = [this](int id, int code) { OnCommand(id, code); },
                     .notify = [this](int id) { OnNotify(id); }};
  m_pForm = new FormWindow(parent, {.enter = [this] { OnEnter(); }, .cancel = [this] { Press(kCancel); }});
  if (!templates.empty())
    m_pForm->setFont(FontOf(templates.front().header));
  m_units.emplace(m_pForm->font());
  for (const DialogTemplate& page : templates)
    AddPage(page, description);
  if (description.sheet)
    m_pForm->AddButtons([this] { Press(kOk); }, [this] { Press(kCancel); });
  else if (!templates.empty())
    m_strTitle = templates.front().header.title;
  m_pForm->setWindowTitle(ToQt(m_strTitle));
  if (description.sheet)
    PlaceWindow(description.x, description.y);
  else if (!templates.empty())
    PlaceWindow(templates.front().header.rectangle.x, templates.front().header.rectangle.y);
  ConnectKeyboard();
  ConnectMnemonics();
}

QtDialog::~QtDialog() {
  // The window's end reports nothing: its controls go with it.
  m_result = m_result.value_or(kCancel);
  delete m_pForm.data();
}

void QtDialog::AddPage(const DialogTemplate& page, const CDialogDescription& description) {
  QWidget* const parent = m_pForm->AddPage(ToQt(page.header.title), description.sheet);
  const std::size_t index = m_pages.size();
  m_pages.push_back(parent);
  ++m_nGroup; // no group goes on over the end of a page
  for (const DialogItem& item : page.items) {
    Placed placed{.control = MakeControl(item, parent), .page = index, .group = m_nGroup};
    placed.control->SetEvents(&m_controlEvents);
    if (placed.control->HasStyle(kStyleGroup))
      placed.group = ++m_nGroup;
    placed.control->Move(m_units->ToPixels(item.rectangle));
    m_controls.push_back(std::move(placed));
  }
  m_pForm->SetPageSize(index, m_units->ToPixels({0, 0, page.header.rectangle.width, page.header.rectangle.height})
                                  .size()
                                  .expandedTo(QSize(1, 1)));
}

// 0, 0 leaves the place to the desktop.
void QtDialog::PlaceWindow(int x, int y) {
  if (x == 0 && y == 0)
    return;
  const QWidget* const parent = m_pForm->parentWidget();
  const QPoint origin = parent != nullptr ? parent->mapToGlobal(QPoint(0, 0)) : QPoint(0, 0);
  m_pForm->move(origin + QPoint(m_units->Horizontal(x), m_units->Vertical(y)));
}

void QtDialog::ConnectKeyboard() {
  QWidget* previous = nullptr;
  bool hasDefault = false;
  for (std::size_t i = 0; i < m_controls.size(); ++i) {
    QtControl& control = *m_controls[i].control;
    if (previous != nullptr)
      QWidget::setTabOrder(previous, &control.Widget());
    previous = &control.Widget();
    if (control.Kind() == ControlKind::DefaultButton && !std::exchange(hasDefault, true))
      static_cast<QPushButton&>(control.Widget()).setDefault(true);
    if (control.Kind() == ControlKind::RadioButton)
      ConnectRadioButton(i);
  }
}

void QtDialog::ConnectRadioButton(std::size_t index) {
  QWidget& button = m_controls[index].control->Widget();
  new ArrowKeys(&button, [this, index](int step) { return MoveInGroup(index, step); });
}

// A static text's mnemonic leads to the control that comes next.
void QtDialog::ConnectMnemonics() {
  for (auto placed = m_controls.begin(); placed != m_controls.end(); ++placed) {
    if (placed->control->Kind() != ControlKind::Static)
      continue;
    const auto next = std::find_if(placed + 1, m_controls.end(), [](const Placed& other) {
      return (other.control->Widget().focusPolicy() & Qt::TabFocus) != 0;
    });
    const bool leads = next != m_controls.end() && next->page == placed->page &&
                       ToQt(placed->control->GetText()).contains(QLatin1Char('&'));
    placed->control->SetBuddy(leads ? &next->control->Widget() : nullptr);
  }
}

void QtDialog::FocusFirst() {
  const auto first = std::find_if(m_controls.begin(), m_controls.end(), [](const Placed& placed) {
    const QWidget& widget = placed.control->Widget();
    return placed.page == 0 && (widget.focusPolicy() & Qt::TabFocus) != 0 && widget.isEnabled() && !widget.isHidden();
  });
  if (first != m_controls.end())
    first->control->Widget().setFocus(Qt::TabFocusReason);
}

} // namespace brindle
