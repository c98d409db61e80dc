#include "ui/qt/qt_control.h"

#include "ui/qt/qt_text.h"

#include <QFontMetrics>

#include <algorithm>

namespace brindle {

QtControl::QtControl(const DialogItem& item, QWidget* widget)
    : m_strText(item.caption), m_item(item), m_pWidget(widget) {
  constexpr std::uint32_t kStyleDisabled = 0x08000000;
  // For style sheets of the host, and for whoever drives the window from outside.
  widget->setObjectName(QStringLiteral("control_%1").arg(item.id));
  // What is no tab stop can still be clicked.
  if (!HasStyle(kStyleTabStop) && widget->focusPolicy() != Qt::NoFocus)
    widget->setFocusPolicy(Qt::ClickFocus);
  widget->setEnabled(!HasStyle(kStyleDisabled));
  widget->setVisible(HasStyle(kStyleVisible));
}

QtControl::~QtControl() = default;

void QtControl::Move(const QRect& rectangle) {
  // Styles draw some controls into a picture of their full size, seen or not.
  constexpr int kLargestSide = 4096;
  m_pWidget->setGeometry(QRect(rectangle.topLeft(), rectangle.size().boundedTo(QSize(kLargestSide, kLargestSide))));
  FitText();
}

void QtControl::SetFont(const QFont& font) {
  m_pWidget->setFont(font);
  FitText();
}

void QtControl::Command(int code) const {
  if (m_pEvents != nullptr && !IsOwnChange())
    m_pEvents->command(Id(), code);
}

void QtControl::Notify() const {
  if (m_pEvents != nullptr && !IsOwnChange())
    m_pEvents->notify(Id());
}

void QtControl::FollowTextDirection() {
  m_pWidget->setLayoutDirection(ToQt(m_strText).isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
}

QString QtControl::Fitted(int width) {
  const QString text = ToQt(m_strText);
  const QString fitted =
      m_pWidget->fontMetrics().elidedText(text, Qt::ElideRight, std::max(width, 0), Qt::TextShowMnemonic);
  m_pWidget->setToolTip(fitted == text ? QString() : AsPlainText(text));
  return fitted;
}

std::vector<int> QtControl::ValidIndices(const std::vector<int>& indices) const {
  std::vector<int> valid;
  std::copy_if(indices.begin(), indices.end(), std::back_inserter(valid),
               [count = GetItemCount()](int index) { return index >= 0 && index < count; });
  return valid;
}

std::unique_ptr<QtControl> MakeControl(const DialogItem& item, QWidget* parent) {
  switch (KindOf(item)) {
  case ControlKind::Button:
  case ControlKind::DefaultButton: return MakePushButton(item, parent);
  case ControlKind::CheckBox: return MakeCheckBox(item, parent);
  case ControlKind::RadioButton: return MakeRadioButton(item, parent);
  case ControlKind::GroupBox: return MakeGroupBox(item, parent);
  case ControlKind::Edit:
  case ControlKind::EditNumber: return MakeEdit(item, parent);
  case ControlKind::EditMultiLine: return MakeMultiLineEdit(item, parent);
  case ControlKind::Bitmap: return MakePicture(item, parent);
  case ControlKind::ListBox:
  case ControlKind::MultiListBox: return MakeListBox(item, parent);
  case ControlKind::ComboBox: return MakeComboBox(item, parent);
  case ControlKind::Tree: return MakeTree(item, parent);
  case ControlKind::Tab: return MakeTab(item, parent);
  case ControlKind::SliderHorizontal:
  case ControlKind::SliderVertical: return MakeSlider(item, parent);
  case ControlKind::Date: return MakeDate(item, parent);
  case ControlKind::Static:
  case ControlKind::Unknown: break;
  }
  return MakeStatic(item, parent);
}

} // namespace brindle
