// Texts between the library and Qt; both hold UTF-16.
// Room: ui. Used by: the Qt window system.
// May touch: nothing.
// Invariant: every unit comes back as it was, lone surrogates too.
#pragma once

#include "brindle/text.h"

#include <QFile>
#include <QString>

#include "platform/path.h"

namespace brindle {

[[nodiscard]] inline QString ToQt(const CString& text) {
  return QStringView(text.Units(), text.GetLength()).toString();
}

[[nodiscard]] inline CString FromQt(const QString& text) {
  return CString(std::u16string_view(QStringView(text).utf16(), static_cast<std::size_t>(text.size())));
}

// A script's path ("\" or "/", any letter case) as Qt opens it.
[[nodiscard]] inline QString PathToQt(const CString& path) {
  return QFile::decodeName(QByteArray::fromStdString(ResolvePath(path.View())));
}

} // namespace brindle
