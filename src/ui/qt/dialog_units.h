// Dialog units to pixels: a quarter of a font's average character width, an eighth of its height.
// Room: ui. Used by: the Qt dialogs.
// May touch: the font's metrics.
// Must not: round twice: edges that meet in units meet in pixels.
// Invariant: pixels are Qt's device-independent ones, so that a dense screen changes nothing here.
#pragma once

#include "ui/dialog_template.h"

#include <QFont>
#include <QRect>

namespace brindle {

class DialogUnits {
public:
  explicit DialogUnits(const QFont& font);

  [[nodiscard]] QRect ToPixels(const DialogRectangle& rectangle) const;
  [[nodiscard]] int Horizontal(int units) const;
  [[nodiscard]] int Vertical(int units) const;

private:
  double m_dAverageWidth;
  double m_dHeight;
};

// The font with another size and face; 0 (or less) and the empty text leave them. A size that no screen has room for is
// cut: the system would be busy drawing it for minutes.
[[nodiscard]] QFont FontWith(QFont font, int pointSize, const CString& face);

} // namespace brindle
