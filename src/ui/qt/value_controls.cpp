// Sliders and date pickers.
#include "platform/date_text.h"
#include "ui/qt/qt_control.h"
#include "ui/qt/qt_text.h"

#include <QDateTimeEdit>
#include <QLocale>
#include <QSlider>

namespace brindle {

namespace {

constexpr int kSliderLimit = 100;
constexpr int kTickDistance = 10;

class SliderControl : public QtControl {
public:
  SliderControl(const DialogItem& item, QSlider* slider) : QtControl(item, slider), m_pSlider(slider) {
    constexpr std::uint32_t kStyleAutoTicks = 0x1;
    constexpr std::uint32_t kStyleTopOrLeft = 0x4;
    constexpr std::uint32_t kStyleBothSides = 0x8;
    slider->setRange(0, kSliderLimit);
    slider->setPageStep(kTickDistance);
    slider->setTickInterval(kTickDistance);
    if (HasStyle(kStyleAutoTicks))
      slider->setTickPosition(HasStyle(kStyleBothSides)   ? QSlider::TicksBothSides
                              : HasStyle(kStyleTopOrLeft) ? QSlider::TicksAbove
                                                          : QSlider::TicksBelow);
    // A vertical one has its 0 at the top, and "down" leads away from it.
    const bool vertical = slider->orientation() == Qt::Vertical;
    slider->setInvertedAppearance(vertical);
    slider->setInvertedControls(vertical);
    QObject::connect(slider, &QSlider::valueChanged, slider, [this] { Notify(); });
  }

  [[nodiscard]] int GetPosition() const override { return m_pSlider->value(); }
  void SetPosition(int position) override {
    const OwnChange change(*this);
    m_pSlider->setValue(position); // clamped to the range
  }

private:
  QSlider* m_pSlider;
};

// The desktop's short date, with all digits of the year: a form is no place to guess the century.
QString DateFormat() {
  QString format = QLocale().dateFormat(QLocale::ShortFormat);
  if (!format.contains(QStringLiteral("yyyy")))
    format.replace(QStringLiteral("yy"), QStringLiteral("yyyy"));
  return format;
}

class DateControl : public QtControl {
public:
  DateControl(const DialogItem& item, QDateTimeEdit* edit) : QtControl(item, edit), m_pEdit(edit) {
    // A wall clock's time: no hour of it is missing in any night.
    edit->setTimeSpec(Qt::UTC);
    edit->setMinimumDate(QDate(100, 1, 1));
    edit->setCalendarPopup(true);
    edit->setDisplayFormat(DateFormat());
    const QDateTime now = QDateTime::currentDateTime();
    edit->setDateTime(
        QDateTime(now.date(), QTime(now.time().hour(), now.time().minute(), now.time().second()), Qt::UTC));
    m_strDate = ShownDate();
    QObject::connect(edit, &QDateTimeEdit::dateTimeChanged, edit, [this] {
      if (IsOwnChange())
        return;
      m_strDate = ShownDate();
      Notify();
    });
  }

  [[nodiscard]] CString GetText() const override { return m_strDate; }
  [[nodiscard]] CString GetDate() const override { return m_strDate; }
  // A year that the widget cannot show is kept all the same.
  void SetDate(const CString& date) override {
    if (!IsDateText(date.View()))
      return;
    const OwnChange change(*this);
    m_strDate = date;
    QDateTime shown = QDateTime::fromString(ToQt(date), Form());
    shown.setTimeSpec(Qt::UTC);
    m_pEdit->setDateTime(shown);
  }

private:
  [[nodiscard]] static QString Form() { return QStringLiteral("yyyy-MM-dd HH:mm:ss"); }
  [[nodiscard]] CString ShownDate() const { return FromQt(QLocale::c().toString(m_pEdit->dateTime(), Form())); }

  QDateTimeEdit* m_pEdit;
  CString m_strDate;
};

} // namespace

std::unique_ptr<QtControl> MakeSlider(const DialogItem& item, QWidget* parent) {
  const bool vertical = KindOf(item) == ControlKind::SliderVertical;
  return std::make_unique<SliderControl>(item, new QSlider(vertical ? Qt::Vertical : Qt::Horizontal, parent));
}

std::unique_ptr<QtControl> MakeDate(const DialogItem& item, QWidget* parent) {
  return std::make_unique<DateControl>(item, new QDateTimeEdit(parent));
}

} // namespace brindle
