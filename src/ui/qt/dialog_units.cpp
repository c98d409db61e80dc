#include "ui/qt/dialog_units.h"

#include "ui/qt/qt_text.h"

#include <QFontMetricsF>

#include <algorithm>
#include <cmath>

namespace brindle {

DialogUnits::DialogUnits(const QFont& font) {
  const QString letters = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
  const QFontMetricsF metrics(font);
  m_dAverageWidth = metrics.horizontalAdvance(letters) / static_cast<double>(letters.size());
  m_dHeight = metrics.height();
}

int DialogUnits::Horizontal(int units) const {
  return static_cast<int>(std::lround(units * m_dAverageWidth / 4));
}

int DialogUnits::Vertical(int units) const {
  return static_cast<int>(std::lround(units * m_dHeight / 8));
}

QRect DialogUnits::ToPixels(const DialogRectangle& rectangle) const {
  const int left = Horizontal(rectangle.x);
  const int top = Vertical(rectangle.y);
  return {left, top, Horizontal(rectangle.x + rectangle.width) - left, Vertical(rectangle.y + rectangle.height) - top};
}

QFont FontWith(QFont font, int pointSize, const CString& face) {
  constexpr int kLargest = 144;
  if (!face.IsEmpty())
    font.setFamily(ToQt(face));
  if (pointSize > 0)
    font.setPointSize(std::min(pointSize, kLargest));
  return font;
}

} // namespace brindle
