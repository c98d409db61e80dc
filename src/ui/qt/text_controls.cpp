// Edits, static texts and pictures.
#include "ui/qt/qt_control.h"
#include "ui/qt/qt_text.h"

#include <QImageReader>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QRegularExpressionValidator>
#include <QTextDocument>

#include <limits>

namespace brindle {

namespace {

constexpr std::uint32_t kStyleBorder = 0x00800000;
constexpr std::uint32_t kStyleVerticalScroll = 0x00200000;
constexpr std::uint32_t kStyleHorizontalScroll = 0x00100000;
constexpr std::uint32_t kStyleAutoHorizontalScroll = 0x80;
constexpr std::uint32_t kStyleWantReturn = 0x1000;

class EditControl : public QtControl {
public:
  EditControl(const DialogItem& item, QLineEdit* edit) : QtControl(item, edit), m_pEdit(edit) {
    edit->setMaxLength(CString::kMaxLength);
    edit->setFrame(HasStyle(kStyleBorder));
    if (Kind() == ControlKind::EditNumber) {
      edit->setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]*")), edit));
      edit->setInputMethodHints(Qt::ImhDigitsOnly);
    }
    edit->setText(ToQt(m_strText));
    QObject::connect(edit, &QLineEdit::textChanged, edit, [this](const QString& text) {
      if (IsOwnChange())
        return;
      m_strText = FromQt(text);
      Command(CDialogEvents::TextChanged);
    });
  }

  void SetText(const CString& text) override {
    QtControl::SetText(text);
    const OwnChange change(*this);
    m_pEdit->setText(ToQt(text));
  }

private:
  QLineEdit* m_pEdit;
};

// Enter makes a line only where the template says so; else it is the dialog's.
class PlainTextEdit : public QPlainTextEdit {
public:
  PlainTextEdit(QWidget* parent, bool wantsReturn) : QPlainTextEdit(parent), m_bWantsReturn(wantsReturn) {}

protected:
  void keyPressEvent(QKeyEvent* event) override {
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && !m_bWantsReturn)
      event->ignore();
    else
      QPlainTextEdit::keyPressEvent(event);
  }

private:
  bool m_bWantsReturn;
};

class MultiLineControl : public QtControl {
public:
  MultiLineControl(const DialogItem& item, QPlainTextEdit* edit) : QtControl(item, edit), m_pEdit(edit) {
    const auto policy = [this](std::uint32_t style) {
      return HasStyle(style) ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff;
    };
    edit->setVerticalScrollBarPolicy(policy(kStyleVerticalScroll));
    edit->setHorizontalScrollBarPolicy(policy(kStyleHorizontalScroll));
    edit->setLineWrapMode(HasStyle(kStyleAutoHorizontalScroll) ? QPlainTextEdit::NoWrap : QPlainTextEdit::WidgetWidth);
    edit->setTabChangesFocus(true);
    if (!HasStyle(kStyleBorder))
      edit->setFrameShape(QFrame::NoFrame);
    edit->setPlainText(ToQt(m_strText));
    QObject::connect(edit, &QPlainTextEdit::textChanged, edit, [this] { OnTextChanged(); });
  }

  void SetText(const CString& text) override {
    QtControl::SetText(text);
    const OwnChange change(*this);
    m_pEdit->setPlainText(ToQt(text));
  }

private:
  void OnTextChanged() {
    if (IsOwnChange())
      return;
    // The plain text would turn non-breaking spaces into spaces.
    QString text = m_pEdit->document()->toRawText();
    text.replace(QChar::ParagraphSeparator, QLatin1Char('\n')).replace(QChar::LineSeparator, QLatin1Char('\n'));
    m_strText = FromQt(text);
    Command(CDialogEvents::TextChanged);
  }

  QPlainTextEdit* m_pEdit;
};

class StaticControl : public QtControl {
public:
  StaticControl(const DialogItem& item, QLabel* label) : QtControl(item, label), m_pLabel(label) {
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    FollowTextDirection();
  }

  void SetText(const CString& text) override {
    QtControl::SetText(text);
    FollowTextDirection();
    FitText();
  }
  void SetBuddy(QWidget* buddy) override {
    m_pLabel->setBuddy(buddy);
    FitText();
  }

protected:
  // Several lines where there is room for them, else one that is cut.
  void FitText() override {
    const QFontMetrics metrics = m_pLabel->fontMetrics();
    const bool severalLines = m_pLabel->height() >= metrics.height() + metrics.lineSpacing();
    m_pLabel->setWordWrap(severalLines);
    const QString whole = ToQt(m_strText);
    QString text = severalLines ? whole : Fitted(m_pLabel->width());
    if (severalLines) {
      const QRect needed = metrics.boundingRect(QRect(0, 0, m_pLabel->width(), 0), Qt::TextWordWrap, whole);
      m_pLabel->setToolTip(needed.height() > m_pLabel->height() ? AsPlainText(whole) : QString());
    }
    // A mnemonic that leads nowhere is not underlined, and a label shows the sign itself then.
    if (m_pLabel->buddy() == nullptr)
      text = WithoutMnemonic(text);
    m_pLabel->setText(text);
  }

private:
  static QString WithoutMnemonic(const QString& text) {
    QString plain;
    for (qsizetype i = 0; i < text.size(); ++i) {
      if (text[i] == QLatin1Char('&') && ++i == text.size())
        break;
      plain += text[i];
    }
    return plain;
  }

  QLabel* m_pLabel;
};

// A drawing of the vector kind can name other files as parts of it, from wherever the script may not look.
QPixmap ReadPicture(const QString& path) {
  QImageReader reader(path);
  return reader.format().startsWith("svg") ? QPixmap() : QPixmap::fromImage(reader.read());
}

// The caption is the path of a picture; one that is larger than its place is scaled down.
class PictureControl : public QtControl {
public:
  PictureControl(const DialogItem& item, QLabel* label) : QtControl(item, label), m_pLabel(label) {
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    Load();
  }

  void SetText(const CString& text) override {
    QtControl::SetText(text);
    Load();
    FitText();
  }

protected:
  void FitText() override {
    const bool fits = m_picture.width() <= m_pLabel->width() && m_picture.height() <= m_pLabel->height();
    m_pLabel->setPixmap(fits || m_picture.isNull()
                            ? m_picture
                            : m_picture.scaled(m_pLabel->size(), Qt::KeepAspectRatio, Qt::SmoothTransformation));
  }

private:
  void Load() {
    m_picture = m_strText.IsEmpty() ? QPixmap() : ReadPicture(PathToQt(m_strText));
    m_pLabel->setToolTip(m_picture.isNull() ? AsPlainText(ToQt(m_strText)) : QString());
  }

  QLabel* m_pLabel;
  QPixmap m_picture;
};

} // namespace

std::unique_ptr<QtControl> MakeEdit(const DialogItem& item, QWidget* parent) {
  return std::make_unique<EditControl>(item, new QLineEdit(parent));
}

std::unique_ptr<QtControl> MakeMultiLineEdit(const DialogItem& item, QWidget* parent) {
  return std::make_unique<MultiLineControl>(item, new PlainTextEdit(parent, (item.style & kStyleWantReturn) != 0));
}

std::unique_ptr<QtControl> MakeStatic(const DialogItem& item, QWidget* parent) {
  return std::make_unique<StaticControl>(item, new QLabel(parent));
}

std::unique_ptr<QtControl> MakePicture(const DialogItem& item, QWidget* parent) {
  return std::make_unique<PictureControl>(item, new QLabel(parent));
}

} // namespace brindle
