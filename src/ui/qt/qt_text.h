// Texts between the library and Qt; both hold UTF-16.
// Room: ui. Used by: the Qt window system.
// May touch: nothing.
// Invariant: every unit comes back as it was, lone surrogates too.
#pragma once

#include "brindle/text.h"

#include <QFile>
#include <QString>
#include <QTextDocument>

#include "platform/path.h"

namespace brindle {

[[nodiscard]] inline QString ToQt(const CString& text) {
  return QStringView(text.Units(), text.GetLength()).toString();
}

[[nodiscard]] inline CString FromQt(const QString& text) {
  return CString(std::u16string_view(QStringView(text).utf16(), static_cast<std::size_t>(text.size())));
}

// For a tool tip, which would take a text that looks like markup for it, and show the pictures that it names.
[[nodiscard]] inline QString AsPlainText(const QString& text) {
  return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

// A script's path ("\" or "/", any letter case) as Qt opens it.
[[nodiscard]] inline QString PathToQt(const CString& path) {
  return QFile::decodeName(QByteArray::fromStdString(ResolvePath(path.View())));
}

} // namespace brindle
