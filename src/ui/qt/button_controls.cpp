// Push buttons, check boxes, radio buttons and group boxes.
#include "ui/qt/qt_control.h"
#include "ui/qt/qt_text.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QStyleOptionButton>

namespace brindle {

namespace {

// What is left for the caption beside the frame or the box to check.
int CaptionWidth(const QAbstractButton& button) {
  const QStyle& style = *button.style();
  if (qobject_cast<const QPushButton*>(&button) != nullptr)
    return button.width() - style.pixelMetric(QStyle::PM_ButtonMargin, nullptr, &button);
  return button.width() - style.pixelMetric(QStyle::PM_IndicatorWidth, nullptr, &button) -
         style.pixelMetric(QStyle::PM_CheckBoxLabelSpacing, nullptr, &button);
}

class ButtonControl : public QtControl {
public:
  ButtonControl(const DialogItem& item, QAbstractButton* button) : QtControl(item, button), m_pButton(button) {
    ShowText();
    // Only a user's click is one; a change of state by the script is none.
    QObject::connect(button, &QAbstractButton::clicked, button, [this] { Command(CDialogEvents::Clicked); });
  }

  void SetText(const CString& text) override {
    QtControl::SetText(text);
    ShowText();
  }
  [[nodiscard]] bool IsChecked() const override { return m_pButton->isChecked(); }
  void SetChecked(bool checked) override { m_pButton->setChecked(checked); }

protected:
  void FitText() override { m_pButton->setText(Fitted(CaptionWidth(*m_pButton))); }

private:
  void ShowText() {
    FollowTextDirection();
    FitText();
  }

  QAbstractButton* m_pButton;
};

// Which buttons exclude each other is the dialog's business: its groups are not those of the widgets' parents.
class RadioButton : public QRadioButton {
public:
  explicit RadioButton(QWidget* parent) : QRadioButton(parent) { setAutoExclusive(false); }

protected:
  void nextCheckState() override { setChecked(true); }
};

class GroupBoxControl : public QtControl {
public:
  GroupBoxControl(const DialogItem& item, QGroupBox* box) : QtControl(item, box), m_pBox(box) { ShowText(); }

  void SetText(const CString& text) override {
    QtControl::SetText(text);
    ShowText();
  }

protected:
  void FitText() override { m_pBox->setTitle(Fitted(m_pBox->width() - 4 * m_pBox->fontMetrics().averageCharWidth())); }

private:
  void ShowText() {
    FollowTextDirection();
    FitText();
  }

  QGroupBox* m_pBox;
};

} // namespace

std::unique_ptr<QtControl> MakePushButton(const DialogItem& item, QWidget* parent) {
  auto* const button = new QPushButton(parent);
  button->setAutoDefault(false); // Enter is the dialog's: without a default button it means OK
  return std::make_unique<ButtonControl>(item, button);
}

std::unique_ptr<QtControl> MakeCheckBox(const DialogItem& item, QWidget* parent) {
  return std::make_unique<ButtonControl>(item, new QCheckBox(parent));
}

std::unique_ptr<QtControl> MakeRadioButton(const DialogItem& item, QWidget* parent) {
  return std::make_unique<ButtonControl>(item, new RadioButton(parent));
}

std::unique_ptr<QtControl> MakeGroupBox(const DialogItem& item, QWidget* parent) {
  auto* const box = new QGroupBox(parent);
  box->lower(); // it stands around its controls, wherever the template lists it
  return std::make_unique<GroupBoxControl>(item, box);
}

} // namespace brindle
